#pragma once

#include <filesystem>

namespace oV::Roamscan::tool
{

/// Where an output really goes: a link is followed, so that renaming does not replace the link.
/// @throws ToolError if the link cannot be followed
[[nodiscard]] std::filesystem::path realTarget(std::filesystem::path const& target);

/// A name beside the target that nothing has yet, as far as chance goes; on the same file system, so that
/// renaming is enough to put it in place.
[[nodiscard]] std::filesystem::path temporaryBeside(std::filesystem::path const& target);

} // namespace oV::Roamscan::tool
