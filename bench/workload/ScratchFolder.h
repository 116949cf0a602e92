#pragma once

#include <filesystem>

namespace bench
{

/// A folder for the files of this process, which is removed when the process ends.
/// @throws std::runtime_error if it cannot be created
[[nodiscard]] std::filesystem::path const& scratchFolder();

} // namespace bench
