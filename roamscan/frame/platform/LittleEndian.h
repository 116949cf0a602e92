#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>

/// @file
/// Unsigned integers as bytes in little-endian order, on every platform.

namespace oV::Roamscan
{

/// The bytes of `value`, least significant byte first.
template <std::unsigned_integral Value>
[[nodiscard]] constexpr std::array<char, sizeof(Value)> toLittleEndian(Value value)
{
    std::array<char, sizeof(Value)> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
    }
    return bytes;
}

/// The unsigned integer stored in `bytes`, least significant byte first.
/// @param bytes at most 8 bytes, which is not checked; missing upper bytes count as 0
[[nodiscard]] constexpr std::uint64_t fromLittleEndian(std::span<char const> bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        value |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    }
    return value;
}

} // namespace oV::Roamscan
