#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace oV::Roamscan::tool
{

/// A file opened for reading, byte for byte.
struct InputFile
{
    std::ifstream stream;
    std::uint64_t size = 0; ///< Bytes.
};

/// @throws ToolError if there is no ordinary file of this name, or it cannot be read
[[nodiscard]] InputFile openInput(std::filesystem::path const& path);

} // namespace oV::Roamscan::tool
