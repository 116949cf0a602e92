#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// A floor of 24 m by 14 m: a corridor, three rooms on either side of it, doors, pillars and cupboards. Its
/// lowest corner is the origin.
[[nodiscard]] Building roomPlan();

/// A round walk through all rooms of that floor and their doors, about 80 m long: the corners of a closed
/// line.
[[nodiscard]] std::vector<Eigen::Vector2d> roundWalk();

} // namespace oV::Roamscan::tool
