#include <roamscan/frame/platform/LittleEndian.h>
#include <roamscan/frame/values/Endianness.h>
#include <roamscan/streams/detail/LengthPrefixedBuffer.h>

#include <array>
#include <cstdint>
#include <istream>
#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>

namespace oV::Roamscan::detail
{

namespace
{

constexpr std::size_t countSize = 8;
constexpr std::uint64_t largestBuffer = std::numeric_limits<std::ptrdiff_t>::max();

std::size_t checkedSize(std::uint64_t count)
{
    if (count > largestBuffer) {
        throw std::length_error("The byte count of a stream exceeds the largest possible buffer");
    }
    return static_cast<std::size_t>(count);
}

} // namespace

StreamBuffer::StreamBuffer(std::size_t size) : bytes_(allocateUntouched(size)), size_(size)
{
    if (!bytes_) {
        throw std::bad_alloc();
    }
}

std::optional<StreamBuffer> readLengthPrefixed(std::istream& stream)
{
    if (!stream.good()) {
        return std::nullopt;
    }
    std::array<char, countSize> count{};
    stream.read(count.data(), countSize);
    Endianness::bigEndian = false;
    if (!stream.good()) {
        return std::nullopt;
    }
    StreamBuffer buffer(checkedSize(fromLittleEndian(count)));
    stream.read(reinterpret_cast<char*>(buffer.data()), static_cast<std::streamsize>(buffer.bytes().size()));
    if (!stream.good()) {
        return std::nullopt;
    }
    return buffer;
}

bool writeLengthPrefixed(std::ostream& stream, std::span<std::byte const> bytes)
{
    Endianness::bigEndian = false;
    if (!stream.good()) {
        return false; // keeps the state of the stream
    }
    std::array<char, countSize> const count = toLittleEndian(std::uint64_t{bytes.size()});
    stream.write(count.data(), countSize);
    stream.write(reinterpret_cast<char const*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return stream.good();
}

} // namespace oV::Roamscan::detail
