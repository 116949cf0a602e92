/// @file
/// Building a trajectory from nodes, and copying one, against inserting the same poses into an ordered map.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/Walk.h"
#include "tests/support/MapPoseFunction.h"

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <algorithm>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::Trajectory;
using Nodes = std::vector<oV::Roamscan::TrajectoryNode>;

Trajectory build(Nodes const& nodes)
{
    return oV::Roamscan::buildTrajectoryFromTrajectoryNodes(
        nodes, poseOfWalk(1.0), poseOfWalk(2.0).inverse());
}

Trajectory buildPlainly(Nodes const& nodes)
{
    Pose const right = poseOfWalk(1.0);
    Pose const left = poseOfWalk(2.0).inverse();
    support::MapPoseFunction plain;
    for (auto const& node : nodes) {
        plain.poses[oV::Roamscan::TimeStamp(node.time)] = (left * node.pose) * right;
    }
    auto const start = plain.poses.begin()->first;
    auto const stop = plain.poses.rbegin()->first;
    return Trajectory(start, stop, Trajectory::PoseFunction(std::move(plain)));
}

enum class Order
{
    InOrder,
    Reversed,
    Shuffled
};

struct BuildingInput
{
    explicit BuildingInput(Order order) : nodes(makeNodes(1'000'000, Spacing::Even))
    {
        if (order == Order::Reversed) {
            std::reverse(nodes.begin(), nodes.end());
        } else if (order == Order::Shuffled) {
            std::shuffle(nodes.begin(), nodes.end(), std::mt19937_64(22));
        }
        // Only methods that give the same poses can be compared.
        Trajectory const ours = build(nodes);
        Trajectory const plain = buildPlainly(nodes);
        for (std::size_t i = 0; i < nodes.size(); i += 1001) {
            if (ours.sample(nodes[i].time).serialize() != plain.sample(nodes[i].time).serialize()) {
                throw std::logic_error("the trajectories over table and map differ");
            }
        }
    }

    Nodes nodes;
};

template <Trajectory make(Nodes const&), Order order>
void building(benchmark::State& state)
{
    timeEach(state, [&nodes = inputFor<BuildingInput>(order).nodes] { return make(nodes); });
}

template <Trajectory make(Nodes const&)>
void copying(benchmark::State& state)
{
    static Trajectory const original = make(inputFor<BuildingInput>(Order::InOrder).nodes);
    timeEach(state, [] { return Trajectory(original); });
}

template <Order order>
Figure buildingFigure(std::string const& orderName, std::optional<double> target = std::nullopt)
{
    return {"from 1,000,000 nodes, " + orderName,
            milliseconds,
            {"build", building<build, order>},
            {{"std::map", building<buildPlainly, order>, timesAsFast, target}}};
}

} // namespace

Group trajectoryBuilding()
{
    return {"Making a trajectory",
            Cost::ReportedTime,
            {buildingFigure<Order::InOrder>("in order", 5.0),
             {"copying one of 1,000,000 poses",
              milliseconds,
              {"copy", copying<build>},
              {{"std::map", copying<buildPlainly>}}},
             buildingFigure<Order::Reversed>("reversed"),
             buildingFigure<Order::Shuffled>("shuffled")}};
}

} // namespace bench
