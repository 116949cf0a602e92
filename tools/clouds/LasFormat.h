#pragma once

#include "tools/points/FieldType.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <vector>

/// The records of points in LAS files, as LAS 1.4 (ASPRS, revision 15) defines them.
namespace oV::Roamscan::tool
{

constexpr std::size_t lasHeaderSize = 375;      ///< In bytes; from version 1.4.
constexpr std::size_t lasRecordHeaderSize = 54; ///< In bytes; of a variable-length record.
constexpr std::size_t lasDescriptorSize = 192;  ///< In bytes; of an extra number.

/// The number stored at `bytes` in little-endian order.
template <typename Number>
[[nodiscard]] Number loadLittleEndian(char const* bytes)
{
    if constexpr (std::endian::native == std::endian::little) {
        return load<Number>(bytes);
    }
    char native[sizeof(Number)]; // NOLINT(modernize-avoid-c-arrays): as simple as the bytes
    std::reverse_copy(bytes, bytes + sizeof(Number), native);
    return load<Number>(native);
}

/// Stores a number at `bytes` in little-endian order.
template <typename Number>
void storeLittleEndian(char* bytes, Number number)
{
    store(bytes, number);
    if constexpr (std::endian::native != std::endian::little) {
        std::reverse(bytes, bytes + sizeof(Number));
    }
}

/// A number in the standard part of a record, after x, y and z.
struct LasDimension
{
    char const* name = "";
    FieldType type = FieldType::UInt8;
    std::size_t byte = 0; ///< In the record.
    unsigned shift = 0;   ///< Of the lowest bit in the byte.
    unsigned bits = 0;    ///< 0 if it is a whole number of its type.
};

/// The size of the standard part of a record, by the point format from 0 to 10.
[[nodiscard]] std::size_t lasRecordSize(unsigned format);

/// The numbers in the standard part of a record of a point format, without x, y and z.
[[nodiscard]] std::vector<LasDimension> lasDimensions(unsigned format);

} // namespace oV::Roamscan::tool
