#pragma once

#include "tools/io/InputFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace oV::Roamscan::tool
{

/// As many tables as a frame can be read back with, its root among them.
inline constexpr std::size_t largestTableCount = 1'000'000;

/// The first frame of a file: a 64-bit little-endian byte count, then as many bytes.
template <typename Store>
struct FrameFile
{
    std::shared_ptr<Store> data;   ///< Never null.
    std::uint64_t bytesBehind = 0; ///< What follows the frame in the file.
};

/// Opens a file for reading its first frame. A length that does not fit the file is told before anybody makes
/// room for it. `kind` is what messages call the content, "trajectory stream" say.
/// @throws ToolError
[[nodiscard]] InputFile openFrame(std::filesystem::path const& path, std::string_view kind);

/// Reads the frame at the file's start into a new store; nothing if it is not a sound one of that kind.
template <typename Store>
[[nodiscard]] std::optional<FrameFile<Store>> readFirstFrame(InputFile& file)
{
    file.stream.clear();
    file.stream.seekg(0);
    std::shared_ptr<Store> data = Store::read(file.stream);
    if (!data) {
        return std::nullopt;
    }
    auto const end = static_cast<std::uint64_t>(file.stream.tellg());
    return FrameFile<Store>{std::move(data), file.size - end};
}

} // namespace oV::Roamscan::tool
