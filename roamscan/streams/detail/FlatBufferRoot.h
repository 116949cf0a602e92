#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace oV::Roamscan::detail
{

/// The largest buffer that FlatBuffers' signed 32-bit offsets can address, two bytes short of 2 GiB.
inline constexpr std::uint64_t largestFlatBuffer = FLATBUFFERS_MAX_BUFFER_SIZE - 1;

/// The most tables that a buffer may have to pass verification. A table that is referred to more than once
/// counts each time.
inline constexpr flatbuffers::uoffset_t largestTableCount = 1'000'000;

/// Verifies a buffer: nesting depth at most 64, at most `largestTableCount` tables, alignment checked.
/// @return the root table, or null if the buffer is not valid
template <typename Root>
[[nodiscard]] Root const* verifiedRoot(std::span<std::byte const> bytes)
{
    if (bytes.size() > largestFlatBuffer) {
        return nullptr; // the verifier only asserts it
    }
    auto const* const data = reinterpret_cast<std::uint8_t const*>(bytes.data());
    constexpr flatbuffers::uoffset_t largestDepth = 64;
    flatbuffers::Verifier verifier(data, bytes.size(), largestDepth, largestTableCount);
    return verifier.VerifyBuffer<Root>(nullptr) ? flatbuffers::GetRoot<Root>(data) : nullptr;
}

/// Copies a struct out of a vector. The verifier checks the alignment of the vector's length only, so the
/// structs themselves may be misaligned and must not be read in place.
template <typename Struct>
[[nodiscard]] Struct structAt(flatbuffers::Vector<Struct const*> const& vector, flatbuffers::uoffset_t index)
{
    Struct copy;
    std::memcpy(
        static_cast<void*>(&copy), vector.Data() + std::size_t{index} * sizeof(Struct), sizeof(Struct));
    return copy;
}

} // namespace oV::Roamscan::detail
