#pragma once

#include "tools/scene/PathScene.h"

namespace oV::Roamscan::tool
{

/// The middle of the scene's bounds in whole metres: coordinates relative to it are small, and differ from
/// the full ones by whole numbers. Zero for an empty scene.
[[nodiscard]] ScenePoint sceneOrigin(PathScene const& scene);

} // namespace oV::Roamscan::tool
