#include "tools/scene/PathSceneOfObject.h"

#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/time/EigenConversion.h>

#include <cmath>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

// Half of the range, so that the difference of two coordinates is in the range, too.
constexpr double farthest = std::numeric_limits<float>::max() / 2.0F;

bool isUsable(ScenePoint const& point)
{
    return (toEigen(point).array().abs() <= farthest).all();
}

void addLine(Line const& line, PathScene& scene)
{
    scene.line.reserve(scene.line.size() + line.points().size());
    for (ScenePoint const& point : line.points()) {
        if (isUsable(point)) {
            scene.line.push_back(point);
        } else {
            ++scene.ignoredPoints;
        }
    }
}

void addMarker(Sphere const& sphere, PathScene& scene)
{
    if (isUsable(sphere.position()) && std::abs(sphere.size()) <= farthest) {
        scene.markers.push_back({sphere.getName().stringAnsi(), sphere.position(), sphere.size()});
    } else {
        ++scene.ignoredMarkers;
    }
}

} // namespace

PathScene pathSceneOf(Object const& object)
{
    PathScene scene;
    scene.name = object.getName().stringAnsi();
    for (Object::Child const& child : object.children()) {
        if (auto const* const line = dynamic_cast<Line const*>(child.object.get())) {
            addLine(*line, scene);
        } else if (auto const* const sphere = dynamic_cast<Sphere const*>(child.object.get())) {
            addMarker(*sphere, scene);
        }
    }
    return scene;
}

} // namespace oV::Roamscan::tool
