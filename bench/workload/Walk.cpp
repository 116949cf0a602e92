#include "bench/workload/Walk.h"

#include "tools/simulation/WalkMotion.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <random>

namespace bench
{

using oV::Roamscan::TrajectoryNode;

Pose poseOfWalk(double seconds)
{
    static oV::Roamscan::tool::WalkMotion const motion(
        {{-30.0, -18.0}, {30.0, -18.0}, {30.0, 18.0}, {-30.0, 18.0}}, 0.0, 0.0);
    Eigen::Isometry3d const worldFromDevice = motion.at(seconds);
    return {worldFromDevice.translation(), Eigen::Quaterniond(worldFromDevice.linear()), true};
}

std::vector<TrajectoryNode> makeNodes(std::size_t count, Spacing spacing)
{
    constexpr double start = 100.0; // seconds
    constexpr double posesPerSecond = 200.0;
    std::mt19937_64 generator(20);
    std::exponential_distribution<double> gap(posesPerSecond);
    std::uniform_int_distribution<int> burst(400, 2000); // poses
    std::uniform_real_distribution<double> pause(20.0, 120.0);
    int leftInBurst = 300;
    double time = start;
    std::vector<TrajectoryNode> nodes;
    nodes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (spacing == Spacing::Even) {
            time = start + static_cast<double>(i) / posesPerSecond; // accumulates no rounding errors
        } else if (spacing == Spacing::Random) {
            time += 1e-6 + gap(generator);
        } else if (leftInBurst-- > 0) {
            time += 1.0 / posesPerSecond;
        } else {
            time += pause(generator);
            leftInBurst = burst(generator);
        }
        Pose const pose = poseOfWalk(time);
        Eigen::Matrix3d const matrixA = pose.rotation().toRotationMatrix();
        Eigen::Matrix3d const matrixB = 1e-4 * matrixA;
        nodes.emplace_back(
            time, pose, static_cast<TrajectoryNode::Type>(i % 4), matrixA, matrixB, i % 3 != 0);
    }
    return nodes;
}

std::vector<Query> makeQueries(std::vector<TrajectoryNode> const& nodes, std::size_t count, bool ascending)
{
    std::mt19937_64 generator(21);
    std::uniform_int_distribution<std::uint32_t> anyGap(0, static_cast<std::uint32_t>(nodes.size() - 2));
    std::uniform_real_distribution<double> anyFraction(0.0, 1.0);
    std::vector<Query> queries(count);
    for (Query& query : queries) {
        query.lower = anyGap(generator);
        double const from = nodes[query.lower].time;
        double const to = nodes[query.lower + 1].time;
        query.time = std::min(from + anyFraction(generator) * (to - from), std::nextafter(to, from));
        query.fraction = (query.time - from) / (to - from);
    }
    if (ascending) {
        std::ranges::sort(queries, {}, &Query::time);
    }
    return queries;
}

} // namespace bench
