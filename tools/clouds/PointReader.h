#pragma once

#include "tools/points/PointBlock.h"

#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// A part of a cloud as its file has it.
struct RawBlock
{
    std::uint64_t first = 0; ///< The number of its first point, from 0; of its first line, from 1, in text.
    std::size_t count = 0;   ///< Points; lines in text.
    std::vector<char> bytes;
};

/// Reads the points of a cloud in blocks. Reading and converting are apart, so that several blocks can be
/// converted while the next one is read.
class PointReader
{
public:
    PointReader() = default;
    PointReader(PointReader const&) = delete;
    PointReader& operator=(PointReader const&) = delete;
    virtual ~PointReader() = default;

    [[nodiscard]] virtual PointLayout const& layout() const = 0;

    /// All points, including those that are not read yet.
    [[nodiscard]] virtual std::uint64_t pointCount() const = 0;

    /// Reads the next block; `raw` may be used again for several blocks.
    /// @return false at the end
    /// @throws ToolError if the file is cut off or cannot be read
    [[nodiscard]] virtual bool read(RawBlock& raw) = 0;

    /// Converts a block; the raw one is unspecified afterwards. May run concurrently with itself and read().
    /// @throws ToolError if the block holds anything but points
    virtual void convert(RawBlock& raw, PointBlock& points) const = 0;
};

} // namespace oV::Roamscan::tool
