#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace oV::Roamscan::tool
{

struct InfoOptions
{
    std::vector<std::filesystem::path> files;
    bool json = false; ///< One array with an object for each file, instead of text.
};

/// Tells on `out` what is in each trajectory or sensor stream. A bad file is one line on `err` and does not
/// stop the others.
/// @return whether all files could be read
[[nodiscard]] bool runInfo(InfoOptions const& options, std::ostream& out, std::ostream& err);

} // namespace oV::Roamscan::tool
