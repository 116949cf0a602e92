#pragma once

#include "tools/points/CloudPoint.h"

#include <roamscan/trajectory/Trajectory.h>

#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// The result of placing the points of a scan.
struct Placement
{
    std::vector<CloudPoint> placed; ///< In the world frame of the trajectory, in the order of the scan.
    std::uint64_t withoutTime = 0;  ///< Points without a time.
    std::uint64_t outside = 0;      ///< Points whose time is outside the trajectory.
    std::uint64_t withoutPosition =
        0; ///< Points without a measurement (position zero) or with a position that is not finite.

    [[nodiscard]] std::uint64_t total() const
    {
        return placed.size() + withoutTime + outside + withoutPosition;
    }
};

/// Transforms every point of a scan by the pose of the trajectory at the time of the point.
[[nodiscard]] Placement placePoints(std::vector<CloudPoint> const& scan, Trajectory const& trajectory);

} // namespace oV::Roamscan::tool
