/// @file
/// From nodes to a trajectory, and copying one: against inserting the same poses into an ordered map.

#include "Benchmarks.h"
#include "bench/workload/Walk.h"
#include "tests/support/MapPoseFunction.h"

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::TimeStamp;
using oV::Roamscan::Trajectory;
using oV::Roamscan::TrajectoryNode;

constexpr std::size_t nodeCount = 1'000'000;
constexpr int repetitions = 7;

enum class Order
{
    InOrder,
    Reversed,
    Shuffled
};

Pose const rightTransform = poseOfWalk(1.0);
Pose const leftTransform = poseOfWalk(2.0).inverse();

Trajectory buildPlainly(std::vector<TrajectoryNode> const& nodes)
{
    support::MapPoseFunction plain;
    for (TrajectoryNode const& node : nodes) {
        plain.poses[TimeStamp(node.time)] = (leftTransform * node.pose) * rightTransform;
    }
    TimeStamp const start = plain.poses.begin()->first;
    TimeStamp const stop = plain.poses.rbegin()->first;
    return Trajectory(start, stop, Trajectory::PoseFunction(std::move(plain)));
}

Trajectory build(std::vector<TrajectoryNode> const& nodes)
{
    return oV::Roamscan::buildTrajectoryFromTrajectoryNodes(nodes, rightTransform, leftTransform);
}

void requireAgreement(std::vector<TrajectoryNode> const& nodes)
{
    Trajectory const ours = build(nodes);
    Trajectory const plain = buildPlainly(nodes);
    for (std::size_t i = 0; i < nodes.size(); i += 1001) {
        if (ours.sample(nodes[i].time).serialize() != plain.sample(nodes[i].time).serialize()) {
            throw std::logic_error("the trajectories over table and map differ");
        }
    }
}

// Only those of one order are kept at a time.
std::vector<TrajectoryNode> const& nodesIn(Order order)
{
    static std::vector<TrajectoryNode> nodes;
    static Order current{};
    if (nodes.empty() || current != order) {
        nodes = makeNodes(nodeCount, Spacing::Even);
        if (order == Order::Reversed) {
            std::reverse(nodes.begin(), nodes.end());
        } else if (order == Order::Shuffled) {
            std::shuffle(nodes.begin(), nodes.end(), std::mt19937_64(22));
        }
        requireAgreement(nodes);
        current = order;
    }
    return nodes;
}

Comparison compareBuilding(Order order, std::string const& orderName)
{
    auto const builder = [order](auto make) {
        return [order, make](benchmark::State& state) {
            auto const& nodes = nodesIn(order);
            timeEach(state, [&nodes, make] { return make(nodes); });
        };
    };
    std::string const name = "build/" + orderName.substr(orderName.rfind(' ') + 1);
    Workload const one{1.0};
    Baseline plain{timedByHand("std::map", name + "/map", one, builder(buildPlainly))};
    if (order == Order::InOrder) {
        plain.target = 5.0;
    }
    return {"Making a trajectory",
            "from " + withCommas(nodeCount) + " nodes, " + orderName,
            milliseconds,
            repetitions,
            timedByHand("build", name + "/trajectory", one, builder(build)),
            {std::move(plain)}};
}

Comparison compareCopying()
{
    auto const copier = [](auto make) {
        // What is copied is made by the first measurement, and stays.
        auto const original = std::make_shared<std::unique_ptr<Trajectory>>();
        return [make, original](benchmark::State& state) {
            if (!*original) {
                *original = std::make_unique<Trajectory>(make(nodesIn(Order::InOrder)));
            }
            timeEach(state, [&trajectory = **original] { return Trajectory(trajectory); });
        };
    };
    Workload const one{1.0};
    return {"Making a trajectory",
            "copying one of " + withCommas(nodeCount) + " poses",
            milliseconds,
            repetitions,
            timedByHand("copy", "copy/trajectory", one, copier(build)),
            {Baseline{timedByHand("std::map", "copy/map", one, copier(buildPlainly))}}};
}

} // namespace

std::vector<Comparison> trajectoryBuildingBenchmarks()
{
    return {compareBuilding(Order::InOrder, "in order"),
            compareCopying(),
            compareBuilding(Order::Reversed, "reversed"),
            compareBuilding(Order::Shuffled, "shuffled")};
}

} // namespace bench
