#pragma once

#include <roamscan/frame/platform/LittleEndian.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <istream>
#include <new>
#include <span>
#include <stdexcept>
#include <string>

/// Shared by the fuzz targets.
///
/// The first byte of an input of a stream format selects what the rest is: even, the stream; odd, the buffer
/// of the stream, which gets a correct byte count. So most mutations pass the count and reach the checks of
/// the structure.
namespace fuzz
{

/// Aborts with a message if a property does not hold.
inline void require(bool holds, char const* property)
{
    if (!holds) {
        std::fprintf(stderr, "violated: %s\n", property);
        std::abort();
    }
}

/// The stream that an input stands for.
inline std::string streamBytes(std::span<std::uint8_t const> input)
{
    bool const isBuffer = !input.empty() && input.front() % 2 == 1;
    auto const rest = input.subspan(std::min<std::size_t>(input.size(), 1));
    std::string bytes;
    if (isBuffer) {
        auto const count = oV::Roamscan::toLittleEndian(std::uint64_t{rest.size()});
        bytes.append(count.begin(), count.end());
    }
    bytes.append(rest.begin(), rest.end());
    return bytes;
}

/// Runs a read. A wrong byte count may ask for memory that cannot be allocated; such exceptions are expected.
void mayRunOutOfMemory(auto const& read)
{
    try {
        read();
    } catch (std::bad_alloc const&) {
        return;
    } catch (std::length_error const&) {
        return;
    }
}

/// Requires that a successful read leaves the stream directly after the buffer.
inline void requirePositionAfterBuffer(std::istream& stream, std::string const& bytes)
{
    std::uint64_t const count = oV::Roamscan::fromLittleEndian(std::span(bytes).first(8));
    require(stream.tellg() == static_cast<std::streamoff>(8 + count),
            "the stream is directly after the buffer");
}

} // namespace fuzz
