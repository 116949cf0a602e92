#include "tools/scene/SceneOrigin.h"

#include <roamscan/time/EigenConversion.h>

#include <algorithm>

namespace oV::Roamscan::tool
{

ScenePoint sceneOrigin(PathScene const& scene)
{
    Eigen::AlignedBox3d bounds;
    auto const extend = [&](ScenePoint const& point) { bounds.extend(toEigen(point)); };
    std::ranges::for_each(scene.line, extend);
    std::ranges::for_each(scene.markers, extend, &PathMarker::position);
    if (bounds.isEmpty()) {
        return {};
    }
    return toVec3d((bounds.min() + bounds.sizes() / 2.0).array().round().matrix());
}

} // namespace oV::Roamscan::tool
