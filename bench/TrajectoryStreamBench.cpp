/// @file
/// Writing and reading a trajectory stream, against the tree of objects that FlatBuffers generates: time and
/// peak memory.

#include "bench/Benchmarks.h"
#include "bench/StreamFunctions.h"
#include "bench/baselines/TrajectoryObjectTree.h"
#include "bench/workload/Walk.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

namespace bench
{

namespace
{

constexpr std::size_t nodeCount = 900'000; // 75 minutes

struct Format
{
    using Store = oV::Roamscan::TrajectoryData;

    static Store make()
    {
        using oV::Roamscan::Device;
        Store store;
        store.nodes = makeNodes(nodeCount, Spacing::Even);
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

    static constexpr auto writeThroughTree = writeTrajectoryThroughObjectTree;
    static constexpr auto readThroughTree = readTrajectoryThroughObjectTree;
};

std::string const count = withCommas(nodeCount) + " nodes";

} // namespace

Group trajectoryStream()
{
    auto const write = [](Writer<Format> writer) { return perByte<Format>(writing<Format>(writer)); };
    auto const read = [](Reader<Format> reader) { return perByte<Format>(reading<Format>(reader)); };
    return {"A trajectory stream",
            Cost::ReportedTime,
            {{"writing " + count,
              megabytesPerSecond,
              {"write", write(Format::write)},
              {{"object tree", write(Format::writeThroughTree), Ratio::TimesAsFast, 2.0}}},
             {"reading " + count,
              megabytesPerSecond,
              {"readFromStream", read(Format::read)},
              {{"object tree", read(Format::readThroughTree), Ratio::TimesAsFast, 2.0}}}}};
}

Group trajectoryStreamMemory()
{
    return {
        "Peak memory of a trajectory stream",
        Cost::PeakMemory,
        {{"writing " + count,
          megabytes,
          {"write", peakOfWriting<Format>(Format::write)},
          {{"object tree", peakOfWriting<Format>(Format::writeThroughTree), Ratio::TimesTheMemory, 0.65}}},
         {"reading " + count,
          megabytes,
          {"readFromStream", peakOfReading<Format>(Format::read)},
          {{"object tree", peakOfReading<Format>(Format::readThroughTree), Ratio::TimesTheMemory, 0.65}}}}};
}

} // namespace bench
