#pragma once

#include "tools/motion/StillStretches.h"
#include "tools/simulation/RandomNumbers.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <utility>
#include <vector>

/// Trajectory nodes of simple motions, for tests.
namespace support
{

namespace tool = oV::Roamscan::tool;
using Eigen::Vector3d;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryNode;
using Nodes = std::vector<TrajectoryNode>;

inline constexpr double degree = std::numbers::pi / 180.0;

inline TrajectoryNode nodeAt(double time, Vector3d const& place, double yaw = 0.0)
{
    return {time, TrafoT<double>(place, Eigen::Quaterniond(Eigen::AngleAxisd(yaw, Vector3d::UnitZ())), true)};
}

/// Nodes from one time to another, both included, at so many a second.
inline Nodes
recorded(double from, double to, double rate, std::function<TrajectoryNode(double)> const& motion)
{
    Nodes nodes;
    auto const count = static_cast<int>(std::lround((to - from) * rate));
    for (int i = 0; i <= count; ++i) {
        nodes.push_back(motion(from + i / rate));
    }
    return nodes;
}

inline Nodes standing(double from, double to, double rate = 100.0)
{
    return recorded(from, to, rate, [](double time) { return nodeAt(time, {1, 2, 3}); });
}

inline Nodes joined(Nodes first, Nodes const& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// In seconds.
inline std::vector<std::pair<double, double>> secondsOf(tool::StillStretches const& found)
{
    std::vector<std::pair<double, double>> stretches;
    for (oV::Roamscan::TimeWindow const& section : found.sections) {
        stretches.emplace_back(static_cast<double>(section.start) * 1e-8,
                               static_cast<double>(section.end) * 1e-8);
    }
    return stretches;
}

using Stretches = std::vector<std::pair<double, double>>;

/// On a line at a steady speed.
inline TrajectoryNode gliding(double time, double speed)
{
    return nodeAt(time, speed * time * Vector3d(2, -1, 2) / 3.0);
}

/// With a millimetre and a twentieth of a degree of noise on each number.
inline void addNoise(Nodes& nodes, std::uint64_t seed)
{
    tool::RandomNumbers const random(seed);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        TrafoT<double>& pose = nodes[i].pose;
        for (Eigen::Index axis = 0; axis < 3; ++axis) {
            pose.translation()[axis] += 0.001 * random.normal(i, static_cast<std::uint64_t>(axis));
        }
        pose.rotation() = pose.rotation() *
                          Eigen::AngleAxisd(0.05 * degree * random.normal(i, 3), Vector3d::UnitX()) *
                          Eigen::AngleAxisd(0.05 * degree * random.normal(i, 4), Vector3d::UnitZ());
    }
}

/// Stands and goes in turn; knows when it stands.
class StopAndGo
{
public:
    StopAndGo(std::uint64_t seed, int stops)
    {
        tool::RandomNumbers const random(seed);
        double time = 0.0;
        for (int i = 0; i < stops; ++i) {
            auto const position = static_cast<std::uint64_t>(i);
            double const stay = random.between(2.0, 5.0, position, 0);
            stops_.emplace_back(time, time + stay);
            time += stay + random.between(2.0, 4.0, position, 1);
            double const heading = random.between(-std::numbers::pi, std::numbers::pi, position, 2);
            velocities_.emplace_back(random.between(0.4, 1.5, position, 3) *
                                     Vector3d(std::cos(heading), std::sin(heading), 0.1));
        }
        end_ = time;
    }

    [[nodiscard]] TrajectoryNode at(double time) const
    {
        Vector3d place = Vector3d::Zero();
        double yaw = 0.0;
        for (std::size_t i = 0; i < stops_.size(); ++i) {
            double const next = i + 1 < stops_.size() ? stops_[i + 1].first : end_;
            double const gone = std::clamp(time, stops_[i].second, next) - stops_[i].second;
            place += gone * velocities_[i];
            yaw += gone * 20.0 * degree;
        }
        return nodeAt(time, place, yaw);
    }

    [[nodiscard]] double end() const { return end_; }
    [[nodiscard]] Stretches const& stops() const { return stops_; }

private:
    Stretches stops_;
    std::vector<Vector3d> velocities_;
    double end_ = 0.0;
};

} // namespace support
