#pragma once

#include "tools/scene/PathScene.h"

#include <roamscan/frame/scene/Object.h>

namespace oV::Roamscan::tool
{

/// The scene that a trajectory is drawn as (TrajectoryData::lineFromTrajectory): the name of the object, the
/// points of the lines among its children, and its spheres as markers. What is not finite, or too large for a
/// `float`, is left out and counted.
[[nodiscard]] PathScene pathSceneOf(Object const& object);

} // namespace oV::Roamscan::tool
