#pragma once

#include "tests/support/ByteStrings.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// JPEG files and EXIF blocks, built in tests.
namespace support
{

enum class ByteOrder
{
    Little,
    Big
};

inline std::string number(ByteOrder order, std::uint64_t value, std::size_t count)
{
    std::string const bytes = littleEndian(value).substr(0, count);
    return order == ByteOrder::Little ? bytes : std::string(bytes.rbegin(), bytes.rend());
}

/// A directory entry. `value` is an offset if the value does not fit into four bytes.
struct TiffEntry
{
    std::uint16_t tag = 0;
    std::uint32_t count = 0;
    std::uint32_t value = 0;
    std::uint16_t type = 2;
};

inline std::string entryBytes(ByteOrder order, TiffEntry const& entry)
{
    return number(order, entry.tag, 2) + number(order, entry.type, 2) + number(order, entry.count, 4) +
           number(order, entry.value, 4);
}

/// The number of entries and the entries, without the offset of the next directory.
inline std::string directoryBytes(ByteOrder order, std::vector<TiffEntry> const& entries)
{
    std::string bytes = number(order, entries.size(), 2);
    for (TiffEntry const& entry : entries) {
        bytes += entryBytes(order, entry);
    }
    return bytes;
}

/// The eight-byte header of a block: byte order, 42 and the offset of the directory.
inline std::string tiffHeader(ByteOrder order, std::uint32_t directory = 8)
{
    return (order == ByteOrder::Little ? "II" : "MM") + number(order, 42, 2) + number(order, directory, 4);
}

/// The offset of the bytes after the directory in blocks of tiffBlock().
constexpr std::uint32_t placeBehind(std::uint32_t entries)
{
    return 8 + 2 + 12 * entries + 4;
}

/// A block with one directory and the bytes after it.
inline std::string
tiffBlock(ByteOrder order, std::vector<TiffEntry> const& entries, std::string const& behind = {})
{
    return tiffHeader(order) + directoryBytes(order, entries) + number(order, 0, 4) + behind;
}

/// The header of a segment with this payload: 0xFF, marker and length.
inline std::string segment(int marker, std::string const& payload)
{
    return bytes({0xFF, marker}) + number(ByteOrder::Big, payload.size() + 2, 2) + payload;
}

inline std::string exifName()
{
    return bytes({'E', 'x', 'i', 'f', 0, 0});
}

inline std::string startOfImage()
{
    return bytes({0xFF, 0xD8});
}

/// An APP1 segment that claims the given length.
inline std::string app1(std::size_t length, std::string const& following)
{
    return bytes({0xFF, 0xE1}) + number(ByteOrder::Big, length, 2) + following;
}

/// A picture whose block, as the reader interprets it, is exactly `block`: its last two bytes follow the
/// segment.
inline std::string jpegWithBlock(std::string const& block)
{
    return startOfImage() + app1(block.size() + 6, exifName() + block);
}

/// The block of a camera: make "ACME", model "X100-S", and a date and time. 82 bytes.
inline std::string cameraBlock(ByteOrder order)
{
    constexpr std::uint32_t texts = placeBehind(3);
    return tiffBlock(order,
                     {{271, 5, texts}, {272, 7, texts + 5}, {306, 20, texts + 12}},
                     std::string("ACME\0X100-S\0"
                                 "2008:07:31 16:49:10\0",
                                 32));
}

} // namespace support
