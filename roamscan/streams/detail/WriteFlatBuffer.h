#pragma once

#include <roamscan/frame/values/Endianness.h>
#include <roamscan/streams/detail/FlatBufferRoot.h>
#include <roamscan/streams/detail/LengthPrefixedBuffer.h>

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>

namespace oV::Roamscan::detail
{

/// Builds a buffer and writes it with its length prefix.
///
/// A stream that is not good gets nothing and keeps its state. Neither a buffer for it nor one above
/// `largestFlatBuffer` is built.
///
/// @param sizeBound upper bound of the finished buffer's size; allocated at once, because growing would copy
/// @param pack      builds and finishes the buffer: `void(flatbuffers::FlatBufferBuilder&)`
/// @return whether everything was written and the stream is good
/// @note Clears Endianness::bigEndian in every case, also for a stream that had failed before.
template <typename Pack>
[[nodiscard]] bool writeFlatBuffer(std::ostream& stream, std::uint64_t sizeBound, Pack const& pack)
{
    Endianness::bigEndian = false;
    if (!stream.good() || sizeBound > largestFlatBuffer) {
        return false;
    }
    flatbuffers::FlatBufferBuilder builder(static_cast<std::size_t>(sizeBound));
    pack(builder);
    return writeLengthPrefixed(stream,
                               std::as_bytes(std::span(builder.GetBufferPointer(), builder.GetSize())));
}

} // namespace oV::Roamscan::detail
