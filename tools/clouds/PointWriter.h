#pragma once

#include "tools/points/PointBlock.h"

#include <cstdint>
#include <span>
#include <vector>

namespace oV::Roamscan::tool
{

/// Writes the points of a cloud in blocks. Converting and writing are apart, so that several blocks can be
/// converted while another one is written.
class PointWriter
{
public:
    PointWriter() = default;
    PointWriter(PointWriter const&) = delete;
    PointWriter& operator=(PointWriter const&) = delete;
    virtual ~PointWriter() = default;

    /// Converts points to what the file holds. May run concurrently with itself and with write().
    /// @param times of the points in seconds, for formats that have a time of their own
    /// @param buffer may be used for the result
    /// @return a view of `buffer` or of the points
    /// @throws ToolError if a value cannot be written exactly
    [[nodiscard]] virtual std::span<char const>
    convert(PointBlock const& points, std::span<double const> times, std::vector<char>& buffer) const = 0;

    /// Writes converted points; to be called in the order of the points.
    /// @throws ToolError if the disk is full
    virtual void write(std::span<char const> converted, std::size_t points) = 0;

    /// Writes what is known only after the last point, such as the number of points into the header.
    virtual void finish() = 0;
};

} // namespace oV::Roamscan::tool
