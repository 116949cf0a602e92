#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// A floor of 24 m by 14 m with a corridor, three rooms on either side, doors, pillars and cupboards. The
/// origin is its corner with the smallest coordinates.
[[nodiscard]] Building roomPlan();

/// The corners of a closed line of about 80 m through all rooms of that floor and their doors.
[[nodiscard]] std::vector<Eigen::Vector2d> roundWalk();

} // namespace oV::Roamscan::tool
