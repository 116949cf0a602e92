#include "RecordedStore.h"

#include "Walk.h"

namespace bench
{

oV::Roamscan::TrajectoryData recordedStore(std::size_t nodes)
{
    using oV::Roamscan::Device;
    oV::Roamscan::TrajectoryData store;
    store.nodes = makeNodes(nodes, Spacing::Even);
    for (Device const device : {Device::Device0, Device::Device1, Device::Device2, Device::Device3}) {
        store.devicePositions[device] = poseOfWalk(static_cast<double>(device));
    }
    return store;
}

} // namespace bench
