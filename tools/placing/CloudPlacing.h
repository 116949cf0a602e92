#pragma once

#include "tools/clouds/PointReader.h"
#include "tools/clouds/PointWriter.h"
#include "tools/placing/PointPlacer.h"

#include <Eigen/Core>

#include <functional>
#include <span>

namespace oV::Roamscan::tool
{

/// What is done with the placed points. Each part may be absent.
struct PlacedUses
{
    PointWriter* writer = nullptr;

    /// The distance of a place from where it should be; called concurrently.
    std::function<double(Eigen::Vector3d const&)> error;

    /// Receives the places in the order of the scan.
    std::function<void(std::span<Bv_1_1::Vec3d<double> const>)> look;
};

/// The result of placing a cloud.
struct CloudPlacing
{
    PlacingCounts counts;
    double sumOfSquaredErrors = 0.0;
};

/// Places the points of a cloud: reads, places and writes blocks of points on all cores at once. The memory
/// does not depend on the number of points, and the result not on the number of threads.
/// @throws ToolError if the cloud cannot be read or written to the end
[[nodiscard]] CloudPlacing placeCloud(PointReader& reader, PointPlacer const& placer, PlacedUses const& uses);

} // namespace oV::Roamscan::tool
