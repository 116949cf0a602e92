#pragma once

#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <filesystem>

namespace oV::Roamscan::tool
{

/// A saved container of options. Values of types that this library does not know are part of it and are
/// written back unchanged.
struct OptionsFile
{
    Bv_1_1::SmartPtr<RoamscanOptionsCont> options; ///< Never null.
    ModelFormat::Format format = ModelFormat::Format::Keyed;
};

/// Reads a saved container in either form. The form is that of its first token: the bare form begins with
/// `true` or `false`, the keyed form with a keyword.
/// @throws ToolError if the file cannot be opened or is not a valid container of options; names the line
[[nodiscard]] OptionsFile readOptionsFile(std::filesystem::path const& path);

/// Replaces the file, in the form that it was read in.
/// @throws ToolError; the file is then unchanged
void writeOptionsFile(std::filesystem::path const& path, OptionsFile const& file);

/// The first option with this name. If the container has a saved value of this name without an option, the
/// option is created and appended to the lists.
/// @return null if there is no such option, or only one of an unknown type
[[nodiscard]] Attribute* findOption(OptionsFile& file, Bv_1_1::String const& name);

} // namespace oV::Roamscan::tool
