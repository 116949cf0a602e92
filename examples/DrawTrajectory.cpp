/// @file
/// Draws a trajectory as a polyline with a marker at each node, and iterates over the resulting scene.

#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstdio>

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;

int main()
{
    TrajectoryData data;
    data.nodes.emplace_back(0.0, TrafoT<double>::Translation({1, 0, 0}));
    data.nodes.emplace_back(0.5, TrafoT<double>::Translation({2, 0, 0}));
    data.nodes.emplace_back(1.0, TrafoT<double>::Translation({2, 1, 0}));
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    data.devicePositions[Device::Device1] = TrafoT<double>::Translation({0, 0, 0.5});

    bool const withNodes = true;
    auto const scene = data.lineFromTrajectory(withNodes, L"walk", Device::Device1, Device::Device0);
    std::printf("%s\n", scene->getName().stringAnsi());
    for (oV::Object::Child const& child : scene->children()) {
        if (auto const* const marker = dynamic_cast<oV::Sphere const*>(child.object.get())) {
            auto const& [x, y, z] = marker->position();
            std::printf("  %s at %g, %g, %g\n", marker->getName().stringAnsi(), x, y, z);
        } else if (auto const* const line = dynamic_cast<oV::Line const*>(child.object.get())) {
            std::printf("  a line through %zu points\n", line->points().size());
        }
    }
    return 0;
}
