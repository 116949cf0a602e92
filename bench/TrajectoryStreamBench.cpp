/// @file
/// Writing and reading a trajectory stream, against the tree of objects that FlatBuffers generates: time and
/// peak memory.

#include "bench/Benchmarks.h"
#include "bench/StreamFunctions.h"
#include "bench/workload/Walk.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

namespace bench
{

namespace
{

struct TrajectoryFormat
{
    using Store = oV::Roamscan::TrajectoryData;
    using Root = oV::Roamscan::TrajectorySchema::TrajectoryFile;

    static constexpr char const* name = "trajectory stream";
    static constexpr char const* contents = " 900,000 nodes";
    static constexpr char const* readName = "readFromStream";
    static inline Unit const& unit = megabytesPerSecond;

    static Store make()
    {
        using oV::Roamscan::Device;
        Store store;
        store.nodes = makeNodes(900'000, Spacing::Even); // 75 minutes
        for (Device const device : {Device::Device0, Device::Device1, Device::Device2, Device::Device3}) {
            store.devicePositions[device] = poseOfWalk(static_cast<double>(device));
        }
        return store;
    }

    static bool write(Store const& store, std::ostream& stream) { return store.write(stream); }

    static std::shared_ptr<Store> read(std::istream& stream)
    {
        auto store = std::make_shared<Store>();
        return store->readFromStream(stream) ? store : nullptr;
    }
};

} // namespace

Group trajectoryStream()
{
    return streamTime<TrajectoryFormat>(2.0);
}

Group trajectoryStreamMemory()
{
    return streamMemory<TrajectoryFormat>(0.65);
}

} // namespace bench
