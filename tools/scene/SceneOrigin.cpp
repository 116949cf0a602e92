#include "tools/scene/SceneOrigin.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

/// The bounds of one coordinate.
struct Range
{
    double least = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();

    void include(double value)
    {
        least = std::min(least, value);
        largest = std::max(largest, value);
    }

    [[nodiscard]] double middle() const
    {
        return least <= largest ? std::round(least + (largest - least) / 2.0) : 0.0;
    }
};

} // namespace

ScenePoint sceneOrigin(PathScene const& scene)
{
    Range x;
    Range y;
    Range z;
    auto const include = [&](ScenePoint const& point) {
        x.include(point.x);
        y.include(point.y);
        z.include(point.z);
    };
    std::ranges::for_each(scene.line, include);
    std::ranges::for_each(scene.markers, include, &PathMarker::position);
    return {x.middle(), y.middle(), z.middle()};
}

} // namespace oV::Roamscan::tool
