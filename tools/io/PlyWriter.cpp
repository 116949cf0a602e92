#include "tools/io/PlyWriter.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t vertexSize = 3 * 4 + 2 + 8;

/// Writes the bytes of `bits` from `to` on, and returns the end of them.
template <typename Unsigned>
char* putLittleEndian(char* to, Unsigned bits)
{
    return std::ranges::copy(toLittleEndian(bits), to).out;
}

} // namespace

PlyWriter::PlyWriter(std::ostream& stream) : stream_(stream)
{
    writeHeader();
}

void PlyWriter::add(CloudPoint const& point)
{
    std::array<char, vertexSize> bytes{};
    char* to = bytes.data();
    for (float const coordinate : {point.position.x, point.position.y, point.position.z}) {
        to = putLittleEndian(to, std::bit_cast<std::uint32_t>(coordinate));
    }
    to = putLittleEndian(to, point.intensity);
    putLittleEndian(to, std::bit_cast<std::uint64_t>(point.time));
    stream_.write(bytes.data(), bytes.size());
    ++count_;
}

void PlyWriter::finish()
{
    stream_.seekp(0);
    writeHeader();
    stream_.seekp(0, std::ios::end);
}

void PlyWriter::writeHeader()
{
    // The comment pads the count, so that the header keeps its length when the count changes.
    std::string const digits = std::to_string(count_);
    std::string const padding(std::numeric_limits<std::uint64_t>::digits10 + 1 - digits.size(), '-');
    stream_ << "ply\n"
               "format binary_little_endian 1.0\n"
               "comment points in metres, times in seconds "
            << padding << "\nelement vertex " << digits
            << "\n"
               "property float x\n"
               "property float y\n"
               "property float z\n"
               "property ushort intensity\n"
               "property double time\n"
               "end_header\n";
}

} // namespace oV::Roamscan::tool
