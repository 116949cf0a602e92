/// @file
/// Writes a trajectory store to a file, reads it back, and derives the trajectory between two devices. The
/// file streams must be in binary mode.

#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstdio>
#include <fstream>

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;

int main()
{
    TrajectoryData store;
    for (int i = 0; i <= 100; ++i) {
        store.nodes.emplace_back(0.01 * i, TrafoT<double>::Translation({0.01 * i, 0, 1.5}));
    }
    store.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    store.devicePositions[Device::Device1] = TrafoT<double>::Translation({0, 0, 0.3}); // 30 cm above device 0

    char const* const path = "walk.trajectory";
    std::ofstream output(path, std::ios::binary);
    if (!store.write(output) || !output.flush()) {
        std::fprintf(stderr, "cannot write the store\n");
        return 1;
    }
    output.close();

    std::ifstream input(path, std::ios::binary);
    auto const back = TrajectoryData::read(input);
    if (!back) {
        std::fprintf(stderr, "the file is damaged\n");
        return 1;
    }

    auto const trajectory = back->buildTrajectoryFromTrajectoryNodes(Device::Device1, Device::Device0);
    std::printf("%zu nodes; at 0.5 s device 1 is at a height of %.1f m\n",
                back->nodes.size(),
                trajectory.sample(0.5).translation().z());
    try {
        (void)back->buildTrajectoryFromTrajectoryNodes(Device::Device2, Device::Device0);
    } catch (oV::InternalErrorException const& failure) {
        std::printf("%s\n", failure.what());
    }
    return 0;
}
