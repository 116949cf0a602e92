/// @file
/// A trajectory as scene objects, with a marker for each node: the time for each node.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/Walk.h"

#include <roamscan/frame/scene/Transform.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

namespace bench
{

namespace
{

using oV::Roamscan::TrajectoryData;

TrajectoryData storeOf(std::size_t nodes)
{
    TrajectoryData store;
    store.nodes = makeNodes(nodes, Spacing::Even);
    store.devicePositions[oV::Roamscan::Device::Device0] = poseOfWalk(0.0);
    return store;
}

// Includes the release of the scene.
template <std::size_t nodes>
void drawing(benchmark::State& state)
{
    static TrajectoryData const store = storeOf(nodes);
    timeEach(state, [] {
        auto const scene =
            store.lineFromTrajectory(true, Bv_1_1::String::fromNarrow("walk"), oV::Roamscan::Device::Device0);
        return scene->children().size();
    });
    state.SetItemsProcessed(state.iterations() * std::int64_t{nodes});
}

} // namespace

Group trajectoryDrawing()
{
    return {"A trajectory as scene objects",
            Cost::ReportedTime,
            {{"lineFromTrajectory with markers, per node",
              nanoseconds,
              {"1,000,000 nodes", drawing<1'000'000>},
              {{"100,000 nodes", drawing<100'000>, timesTheTime, 1.3}}}}};
}

} // namespace bench
