#pragma once

#include <roamscan/geometry/IRoamscanData.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan::tool
{

/// The points of a scan in the frame of the scanner, in metres, with their times in seconds; NaN for no time.
struct ScanPoints
{
    std::vector<IRoamscanData::ScanPoint> points;
    std::vector<double> times; ///< One for each point.

    [[nodiscard]] std::size_t size() const { return points.size(); }
};

} // namespace oV::Roamscan::tool
