#pragma once

#include "tools/scene/PathScene.h"

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Writes the scene as Wavefront OBJ: the path as line elements, and each marker as an octahedron of its own,
/// or all markers as point elements if they are many (PathScene::mostSpheres).
///
/// Coordinates are in metres with z up, as text that reads back to the same `double`.
void writeObj(PathScene const& scene, std::ostream& stream);

} // namespace oV::Roamscan::tool
