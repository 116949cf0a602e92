#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace oV::Roamscan::detail
{

/// The largest buffer that FlatBuffers' 32-bit offsets reach, one byte short of 2 GiB.
inline constexpr std::uint64_t largestFlatBuffer = FLATBUFFERS_MAX_BUFFER_SIZE - 1;

/// The root table of a buffer that was verified with the verifier's default limits (1,000,000 tables, depth
/// 64, alignment checked), or null if it is not a sound buffer of that root.
template <typename Root>
[[nodiscard]] Root const* verifiedRoot(std::span<std::byte const> bytes)
{
    if (bytes.size() > largestFlatBuffer) {
        return nullptr; // the verifier itself takes this for granted
    }
    auto const* const data = reinterpret_cast<std::uint8_t const*>(bytes.data());
    flatbuffers::Verifier verifier(data, bytes.size());
    return verifier.VerifyBuffer<Root>(nullptr) ? flatbuffers::GetRoot<Root>(data) : nullptr;
}

/// A struct of a vector, as a copy: the verifier looks at the alignment of the vector's head alone, so the
/// structs themselves may lie where they must not be read in place.
template <typename Struct>
[[nodiscard]] Struct structAt(flatbuffers::Vector<Struct const*> const& vector, flatbuffers::uoffset_t index)
{
    Struct copy;
    std::memcpy(
        static_cast<void*>(&copy), vector.Data() + std::size_t{index} * sizeof(Struct), sizeof(Struct));
    return copy;
}

/// Whether contents of `unpackedSize` bytes are in proportion to the buffer they come from. Tables and
/// vectors of a buffer may share each other, so a small hostile one could unpack to gigabytes.
[[nodiscard]] inline bool unpackedSizeIsReasonable(std::uint64_t unpackedSize, std::size_t bufferSize)
{
    constexpr std::uint64_t largestGrowth = 16;
    return unpackedSize / largestGrowth <= bufferSize;
}

} // namespace oV::Roamscan::detail
