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

using oV::Roamscan::TimeStamp;
using oV::Roamscan::Trajectory;
using Nodes = std::vector<oV::Roamscan::TrajectoryNode>;

constexpr std::size_t nodeCount = 1'000'000;

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
        plain.poses[TimeStamp(node.time)] = (left * node.pose) * right;
    }
    TimeStamp const start = plain.poses.begin()->first;
    TimeStamp const stop = plain.poses.rbegin()->first;
    return Trajectory(start, stop, Trajectory::PoseFunction(std::move(plain)));
}

enum class Order
{
    InOrder,
    Reversed,
    Shuffled
};

struct Input
{
    explicit Input(Order order) : nodes(makeNodes(nodeCount, Spacing::Even))
    {
        if (order == Order::Reversed) {
            std::reverse(nodes.begin(), nodes.end());
        } else if (order == Order::Shuffled) {
            std::shuffle(nodes.begin(), nodes.end(), std::mt19937_64(22));
        }
        requireAgreement();
    }

    // Only methods that give the same poses can be compared.
    void requireAgreement() const
    {
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

using Builder = Trajectory (*)(Nodes const&);

Function building(Order order, Builder make)
{
    return [order, make](benchmark::State& state) {
        auto const& nodes = inputFor<Input>(order).nodes;
        timeEach(state, [&nodes, make] { return make(nodes); });
    };
}

Function copying(Builder make)
{
    return [make](benchmark::State& state) {
        Trajectory const original = make(inputFor<Input>(Order::InOrder).nodes);
        timeEach(state, [&original] { return Trajectory(original); });
    };
}

Figure buildingFigure(std::string const& orderName, Order order, std::optional<double> target = std::nullopt)
{
    return {"from " + withCommas(nodeCount) + " nodes, " + orderName,
            milliseconds,
            {"build", building(order, build)},
            {{"std::map", building(order, buildPlainly), Ratio::TimesAsFast, target}}};
}

} // namespace

Group trajectoryBuilding()
{
    return {"Making a trajectory",
            Cost::ReportedTime,
            {buildingFigure("in order", Order::InOrder, 5.0),
             {"copying one of " + withCommas(nodeCount) + " poses",
              milliseconds,
              {"copy", copying(build)},
              {{"std::map", copying(buildPlainly)}}},
             buildingFigure("reversed", Order::Reversed),
             buildingFigure("shuffled", Order::Shuffled)}};
}

} // namespace bench
