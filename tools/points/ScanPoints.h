#pragma once

#include <roamscan/geometry/IRoamscanData.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan::tool
{

/// The points of a scan in the scanner's own frame, in metres, with their times in seconds; NaN for no time.
struct ScanPoints
{
    std::vector<IRoamscanData::ScanPoint> points;
    std::vector<double> times; ///< As many as there are points.

    [[nodiscard]] std::size_t size() const { return points.size(); }
};

} // namespace oV::Roamscan::tool
