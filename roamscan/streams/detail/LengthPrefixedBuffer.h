#pragma once

#include <roamscan/frame/platform/detail/UntouchedMemory.h>

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>

namespace oV::Roamscan::detail
{

/// The buffer of one frame as it came out of a stream.
class StreamBuffer
{
public:
    /// Room for `size` bytes that is not touched, so that pages which nothing is read into cost no memory.
    /// @throws std::bad_alloc if the room is not to be had
    explicit StreamBuffer(std::size_t size);

    [[nodiscard]] std::byte* data() { return bytes_.get(); }
    [[nodiscard]] std::span<std::byte const> bytes() const { return {bytes_.get(), size_}; }

private:
    UntouchedMemory bytes_;
    std::size_t size_;
};

/// Reads the common outer form of the sample files: an unsigned 64-bit little-endian byte count, then as many
/// bytes. Consumes exactly that. Nothing if the stream is not good on entry, when nothing is read, or if it
/// ends before the last byte. What the allocation or the stream throws passes through.
[[nodiscard]] std::optional<StreamBuffer> readLengthPrefixed(std::istream& stream);

/// Writes the byte count and the bytes; nothing is flushed. True if the stream is good afterwards.
[[nodiscard]] bool writeLengthPrefixed(std::ostream& stream, std::span<std::byte const> bytes);

} // namespace oV::Roamscan::detail
