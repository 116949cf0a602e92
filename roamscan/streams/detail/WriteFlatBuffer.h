#pragma once

#include <roamscan/streams/detail/FlatBufferRoot.h>
#include <roamscan/streams/detail/LengthPrefixedBuffer.h>

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>

namespace oV::Roamscan::detail
{

/// Writes what `pack` builds, and finishes, as one frame. `sizeBound` is no less than the size that the
/// buffer will have: it is made that large at once, as growing it would copy it. True if all was written and
/// the stream is good afterwards; nothing is built for a stream that is not good, nor beyond what a buffer
/// can hold.
template <typename Pack>
[[nodiscard]] bool writeFlatBuffer(std::ostream& stream, std::uint64_t sizeBound, Pack const& pack)
{
    if (!stream.good() || sizeBound > largestFlatBuffer) {
        return false;
    }
    flatbuffers::FlatBufferBuilder builder(static_cast<std::size_t>(sizeBound));
    pack(builder);
    return writeLengthPrefixed(stream,
                               std::as_bytes(std::span(builder.GetBufferPointer(), builder.GetSize())));
}

} // namespace oV::Roamscan::detail
