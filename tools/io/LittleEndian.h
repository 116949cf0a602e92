#pragma once

#include <bit>
#include <cstring>

/// Numbers as the little-endian bytes of files.
namespace oV::Roamscan::tool
{

static_assert(std::endian::native == std::endian::little, "add a byte swap for this platform");

/// Reads the number from its first byte on.
template <typename Number>
[[nodiscard]] Number fromLittleEndian(char const* bytes)
{
    Number number;
    std::memcpy(&number, bytes, sizeof(Number));
    return number;
}

/// Writes the number and returns the place after it.
template <typename Number>
char* toLittleEndian(char* bytes, Number number)
{
    std::memcpy(bytes, &number, sizeof(Number));
    return bytes + sizeof(Number);
}

} // namespace oV::Roamscan::tool
