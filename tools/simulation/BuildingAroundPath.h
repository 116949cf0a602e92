#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>

#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// A made-up hall around a path: floor, ceiling and outer walls well outside of it, short walls that stand
/// out from them and make bays, and pillars and partitions where they keep clear of the path. The same seed
/// gives the same hall.
[[nodiscard]] Building buildingAround(std::vector<Eigen::Vector3d> const& path, std::uint64_t seed);

} // namespace oV::Roamscan::tool
