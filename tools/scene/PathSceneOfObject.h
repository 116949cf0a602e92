#pragma once

#include "tools/scene/PathScene.h"

#include <roamscan/frame/scene/Object.h>

namespace oV::Roamscan::tool
{

/// Converts the object of a drawn trajectory (TrajectoryData::lineFromTrajectory): takes the name of the
/// object, the points of the lines among its children, and its spheres as markers. Points that are not
/// finite, or too large for a `float`, are left out and counted.
[[nodiscard]] PathScene pathSceneOf(Object const& object);

} // namespace oV::Roamscan::tool
