#include "bench/workload/Walk.h"

#include "tools/simulation/WalkMotion.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <random>

namespace bench
{

namespace
{

constexpr double startOfWalk = 100.0; // seconds
constexpr double posesPerSecond = 200.0;

// Generates the times of a walk in ascending order.
class WalkTimes
{
public:
    explicit WalkTimes(Spacing spacing) : spacing_(spacing) {}

    double next()
    {
        double const time = time_;
        ++count_;
        switch (spacing_) {
        case Spacing::Even:
            time_ = startOfWalk + count_ / posesPerSecond; // accumulates no rounding errors
            break;
        case Spacing::Random:
            time_ += 1e-6 + std::exponential_distribution<double>(posesPerSecond)(generator_);
            break;
        case Spacing::Bursts:
            time_ += leftInBurst_-- > 0 ? 1.0 / posesPerSecond : pause();
            break;
        }
        return time;
    }

private:
    double pause()
    {
        leftInBurst_ = std::uniform_int_distribution<int>(400, 2000)(generator_);
        return std::uniform_real_distribution<double>(20.0, 120.0)(generator_);
    }

    Spacing spacing_;
    double time_ = startOfWalk;
    double count_ = 0.0;
    int leftInBurst_ = 300;
    std::mt19937_64 generator_{20};
};

} // namespace

std::string nameOf(Spacing spacing)
{
    switch (spacing) {
    case Spacing::Even:
        return "even";
    case Spacing::Random:
        return "random gaps";
    case Spacing::Bursts:
        break;
    }
    return "bursts";
}

std::string withCommas(std::size_t count)
{
    std::string text = std::to_string(count);
    for (std::size_t end = text.size(); end > 3; end -= 3) {
        text.insert(end - 3, 1, ',');
    }
    return text;
}

Pose poseOfWalk(double seconds)
{
    static oV::Roamscan::tool::WalkMotion const motion(
        {{-30.0, -18.0}, {30.0, -18.0}, {30.0, 18.0}, {-30.0, 18.0}}, 0.0, 0.0);
    Eigen::Isometry3d const worldFromDevice = motion.at(seconds);
    return {worldFromDevice.translation(), Eigen::Quaterniond(worldFromDevice.linear()), true};
}

Walk makeWalk(std::size_t count, Spacing spacing)
{
    Walk walk;
    walk.times.reserve(count);
    walk.poses.reserve(count);
    WalkTimes times(spacing);
    for (std::size_t i = 0; i < count; ++i) {
        walk.times.push_back(times.next());
        walk.poses.push_back(poseOfWalk(walk.times.back()));
    }
    return walk;
}

std::vector<oV::Roamscan::TrajectoryNode> makeNodes(std::size_t count, Spacing spacing)
{
    using oV::Roamscan::TrajectoryNode;
    std::vector<TrajectoryNode> nodes;
    nodes.reserve(count);
    WalkTimes times(spacing);
    for (std::size_t i = 0; i < count; ++i) {
        double const time = times.next();
        Pose const pose = poseOfWalk(time);
        Eigen::Matrix3d const matrixA = pose.rotation().toRotationMatrix();
        Eigen::Matrix3d const matrixB = 1e-4 * matrixA;
        nodes.emplace_back(
            time, pose, static_cast<TrajectoryNode::Type>(i % 4), matrixA, matrixB, i % 3 != 0);
    }
    return nodes;
}

std::vector<Query> makeQueries(std::vector<double> const& poseTimes, std::size_t count, bool ascending)
{
    std::mt19937_64 generator(21);
    std::uniform_int_distribution<std::uint32_t> anyGap(0, static_cast<std::uint32_t>(poseTimes.size() - 2));
    std::uniform_real_distribution<double> anyFraction(0.0, 1.0);
    std::vector<Query> queries(count);
    for (Query& query : queries) {
        query.lower = anyGap(generator);
        double const from = poseTimes[query.lower];
        double const to = poseTimes[query.lower + 1];
        query.time = std::min(from + anyFraction(generator) * (to - from), std::nextafter(to, from));
        query.fraction = (query.time - from) / (to - from);
    }
    if (ascending) {
        std::sort(
            queries.begin(), queries.end(), [](Query const& a, Query const& b) { return a.time < b.time; });
    }
    return queries;
}

} // namespace bench
