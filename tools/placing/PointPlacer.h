#pragma once

#include "tools/points/CloudPoint.h"
#include "tools/points/ScanPoints.h"

#include <roamscan/trajectory/Trajectory.h>

#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// What became of the points of a scan.
struct Placement
{
    std::vector<CloudPoint> placed; ///< In the trajectory's global frame, in the order of the scan.
    std::uint64_t withoutTime = 0;  ///< Had no time.
    std::uint64_t outside = 0;      ///< Their time lies outside the trajectory.
    std::uint64_t withoutPosition =
        0; ///< No measurement (a local position of zero), or a position that is not finite.

    [[nodiscard]] std::uint64_t total() const
    {
        return placed.size() + withoutTime + outside + withoutPosition;
    }
};

/// Moves every point of a scan to where the trajectory was at the point's time.
[[nodiscard]] Placement placePoints(ScanPoints const& scan, Trajectory const& trajectory);

} // namespace oV::Roamscan::tool
