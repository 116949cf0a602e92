#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>

#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// A fictitious hall around a path: floor, ceiling and outer walls at a distance from it, short walls that
/// divide the sides into bays, and pillars and partitions clear of the path. The same seed gives the same
/// hall.
[[nodiscard]] Building buildingAround(std::vector<Eigen::Vector3d> const& path, std::uint64_t seed);

} // namespace oV::Roamscan::tool
