/// @file
/// Writing and reading a trajectory stream, against the tree of objects that FlatBuffers generates: time and
/// peak memory.

#include "bench/Benchmarks.h"
#include "bench/StreamFunctions.h"
#include "bench/baselines/ObjectTrees.h"
#include "bench/workload/Walk.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

namespace bench
{

namespace
{

struct Format
{
    using Store = oV::Roamscan::TrajectoryData;

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

    static constexpr bool (*writeThroughTree)(Store const&, std::ostream&) = writeThroughObjectTree;
    static constexpr auto readThroughTree = readTrajectoryThroughObjectTree;
};

// With the bytes of the stream as items.
template <void function(benchmark::State&)>
void perByte(benchmark::State& state)
{
    function(state);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(streamInput<Format>().size));
}

} // namespace

Group trajectoryStream()
{
    return {"A trajectory stream",
            Cost::ReportedTime,
            {{"writing 900,000 nodes",
              megabytesPerSecond,
              {"write", perByte<writing<Format, Format::write>>},
              {{"object tree", perByte<writing<Format, Format::writeThroughTree>>, timesAsFast, 2.0}}},
             {"reading 900,000 nodes",
              megabytesPerSecond,
              {"readFromStream", perByte<reading<Format, Format::read>>},
              {{"object tree", perByte<reading<Format, Format::readThroughTree>>, timesAsFast, 2.0}}}}};
}

Group trajectoryStreamMemory()
{
    return {"Peak memory of a trajectory stream",
            Cost::PeakMemory,
            {{"writing 900,000 nodes",
              megabytes,
              {"write", peakOfWriting<Format, Format::write>},
              {{"object tree", peakOfWriting<Format, Format::writeThroughTree>, timesTheMemory, 0.65}}},
             {"reading 900,000 nodes",
              megabytes,
              {"readFromStream", peakOfReading<Format, Format::read>},
              {{"object tree", peakOfReading<Format, Format::readThroughTree>, timesTheMemory, 0.65}}}}};
}

} // namespace bench
