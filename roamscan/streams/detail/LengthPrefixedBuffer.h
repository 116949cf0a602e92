#pragma once

#include <roamscan/frame/platform/detail/UntouchedMemory.h>

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>

namespace oV::Roamscan::detail
{

/// The bytes of one length-prefixed buffer, as read from a stream.
class StreamBuffer
{
public:
    /// Allocates `size` bytes without writing to them, so that pages that are never filled use no memory.
    /// @throws std::bad_alloc if the memory cannot be allocated
    explicit StreamBuffer(std::size_t size);

    [[nodiscard]] std::byte* data() { return bytes_.get(); }
    [[nodiscard]] std::span<std::byte const> bytes() const { return {bytes_.get(), size_}; }

private:
    UntouchedMemory bytes_;
    std::size_t size_;
};

/// Reads a length-prefixed buffer: an unsigned 64-bit little-endian byte count, then that many bytes.
/// Consumes exactly these bytes.
/// @return nothing if the stream ends early, or if it is not good on entry; nothing is consumed in that case
/// @throws std::bad_alloc, std::length_error if a buffer of that size cannot be allocated
/// @throws std::ios_base::failure if exceptions are enabled on the stream
[[nodiscard]] std::optional<StreamBuffer> readLengthPrefixed(std::istream& stream);

/// Writes the byte count and the bytes. Does not flush the stream.
/// @return whether the stream is good afterwards
[[nodiscard]] bool writeLengthPrefixed(std::ostream& stream, std::span<std::byte const> bytes);

} // namespace oV::Roamscan::detail
