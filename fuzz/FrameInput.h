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

/// What the targets of framed formats share.
///
/// The first byte of an input says how the rest is to be taken: even, as a stream; odd, as the inside of a
/// frame, whose byte count is put before it. So most mutations get past the count, to where the structure is
/// examined.
namespace fuzz
{

/// Stops with a message if something does not hold.
inline void require(bool holds, char const* what)
{
    if (!holds) {
        std::fprintf(stderr, "violated: %s\n", what);
        std::abort();
    }
}

inline std::string streamBytes(std::span<std::uint8_t const> input)
{
    bool const isFrame = !input.empty() && input.front() % 2 == 1;
    auto const rest = input.subspan(std::min<std::size_t>(input.size(), 1));
    std::string bytes;
    if (isFrame) {
        auto const count = oV::Roamscan::toLittleEndian(std::uint64_t{rest.size()});
        bytes.append(count.begin(), count.end());
    }
    bytes.append(rest.begin(), rest.end());
    return bytes;
}

/// Runs a read; a count that lies may ask for memory that is not to be had.
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

/// After a read that succeeded the stream stands behind the frame and nowhere else.
inline void requirePositionBehindFrame(std::istream& stream, std::string const& bytes)
{
    std::uint64_t const count = oV::Roamscan::fromLittleEndian(std::span(bytes).first(8));
    require(stream.tellg() == static_cast<std::streamoff>(8 + count), "the stream stands behind the frame");
}

} // namespace fuzz
