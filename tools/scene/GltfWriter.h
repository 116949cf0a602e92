#pragma once

#include "tools/scene/PathScene.h"

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// The two forms of a glTF 2.0 file. Both have their numbers inside.
enum class GltfForm
{
    Text,  ///< .gltf: JSON, with the numbers in base64.
    Binary ///< .glb: smaller and faster to read.
};

/// Writes the scene as glTF 2.0: the path as a line strip, and the markers as nodes with one sphere mesh that
/// they share, or as one set of points if they are many (PathScene::mostSpheres).
///
/// glTF is in metres with y up, so the root node turns z up to y up. Its coordinates are `float`: the node
/// `origin` below the root moves the scene by a `double` offset in whole metres, the middle of its bounds,
/// and the coordinates are relative to it.
/// @param scene not empty
void writeGltf(PathScene const& scene, GltfForm form, std::ostream& stream);

} // namespace oV::Roamscan::tool
