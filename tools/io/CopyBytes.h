#pragma once

#include <cstddef>
#include <istream>
#include <ostream>
#include <vector>

namespace oV::Roamscan::tool
{

/// Copies the rest of a stream in large blocks; std::cin and std::cout would copy their buffers byte by byte.
/// The state of the streams says whether it succeeded.
inline void copyBytes(std::istream& from, std::ostream& to)
{
    constexpr std::size_t bytesAtOnce = std::size_t{1} << 20U;
    std::vector<char> bytes(bytesAtOnce);
    while (from && to) {
        from.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        to.write(bytes.data(), from.gcount());
    }
}

} // namespace oV::Roamscan::tool
