#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace oV::Roamscan::detail
{

/// Limits how much memory the contents of one buffer may take. Tables and vectors of a FlatBuffers buffer may
/// share each other, so a small hostile buffer could unpack to gigabytes.
class UnpackedSize
{
public:
    /// Contents up to this size are always unpacked.
    static constexpr std::uint64_t alwaysUnpacked = std::uint64_t{256} << 20U;

    /// Larger contents may be this many times the size of their buffer.
    static constexpr std::uint64_t largestGrowth = 16;

    explicit UnpackedSize(std::size_t bufferSize)
        : limit_(std::max(alwaysUnpacked, largestGrowth * bufferSize))
    {}

    /// Counts contents of `size` bytes.
    /// @return false once the sum passes the limit
    [[nodiscard]] bool add(std::uint64_t size)
    {
        total_ += size;
        return total_ <= limit_;
    }

private:
    std::uint64_t limit_;
    std::uint64_t total_ = 0;
};

} // namespace oV::Roamscan::detail
