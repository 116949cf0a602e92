#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace oV::Roamscan::tool
{

/// A file opened for binary reading.
struct InputFile
{
    std::ifstream stream;
    std::uint64_t size = 0; ///< Bytes.
};

/// @throws ToolError if there is no regular file of this name, or it cannot be opened
[[nodiscard]] InputFile openInput(std::filesystem::path const& path);

} // namespace oV::Roamscan::tool
