#include "Walk.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace bench
{

namespace
{

constexpr double startOfWalk = 100.0; // seconds
constexpr double posesPerSecond = 200.0;

// The times of a walk, one after the other.
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
            time_ = startOfWalk + count_ / posesPerSecond; // no sum of roundings
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
    std::string const digits = std::to_string(count);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            text += ',';
        }
        text += digits[i];
    }
    return text;
}

Pose poseOfWalk(double seconds)
{
    constexpr double degree = std::numbers::pi / 180.0;
    double const stepPhase = 2.0 * std::numbers::pi * 1.9 * seconds;
    Eigen::Vector3d const position(30.0 * std::sin(0.029 * seconds),
                                   18.0 * std::sin(0.047 * seconds + 1.0),
                                   1.5 + 0.03 * std::sin(stepPhase));
    double const heading =
        std::atan2(18.0 * 0.047 * std::cos(0.047 * seconds + 1.0), 30.0 * 0.029 * std::cos(0.029 * seconds));
    double const yaw = heading + 25.0 * degree * std::sin(0.9 * seconds);
    double const pitch = 3.0 * degree * std::sin(stepPhase + 0.4);
    double const roll = 2.0 * degree * std::sin(0.5 * stepPhase);
    Eigen::Quaterniond const rotation = Eigen::AngleAxisd(yaw, Eigen::Vector3d::UnitZ()) *
                                        Eigen::AngleAxisd(pitch, Eigen::Vector3d::UnitY()) *
                                        Eigen::AngleAxisd(roll, Eigen::Vector3d::UnitX());
    return {position, rotation.normalized(), true};
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

Queries makeQueries(std::vector<double> const& poseTimes, std::size_t count, bool ascending)
{
    std::mt19937_64 generator(21);
    std::uniform_int_distribution<std::uint32_t> anyGap(0, static_cast<std::uint32_t>(poseTimes.size() - 2));
    std::uniform_real_distribution<double> anyFraction(0.0, 1.0);
    std::vector<std::uint32_t> gaps(count);
    std::generate(gaps.begin(), gaps.end(), [&] { return anyGap(generator); });
    if (ascending) {
        std::sort(gaps.begin(), gaps.end());
    }

    Queries queries;
    queries.times.reserve(count);
    queries.neighbours.reserve(count);
    for (std::size_t first = 0; first < count;) {
        // The fractions of the queries in one gap, in order where the times are to ascend.
        std::size_t last = first + 1;
        while (ascending && last < count && gaps[last] == gaps[first]) {
            ++last;
        }
        std::vector<double> fractions(last - first);
        std::generate(fractions.begin(), fractions.end(), [&] { return anyFraction(generator); });
        std::sort(fractions.begin(), fractions.end());

        std::uint32_t const lower = gaps[first];
        double const from = poseTimes[lower];
        double const to = poseTimes[lower + 1];
        for (double const fraction : fractions) {
            double const time = std::min(from + fraction * (to - from), std::nextafter(to, from));
            queries.times.push_back(time);
            queries.neighbours.push_back({lower, (time - from) / (to - from)});
        }
        first = last;
    }
    return queries;
}

} // namespace bench
