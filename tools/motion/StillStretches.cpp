#include "tools/motion/StillStretches.h"

#include "tools/motion/TimedPose.h"

#include <roamscan/time/TimeConversion.h>

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Quaterniond;
using Eigen::Vector3d;

constexpr double shortestHalf = 0.25; // seconds
constexpr double stepsInHalf = 4.0;
constexpr double measurementsInHalf = 12.5; // every 20 ms with the shortest half
constexpr double unitTolerance = 0.01;

using Poses = std::span<TimedPose const>;

bool isUsable(TrajectoryNode const& node)
{
    return std::abs(node.time) <= TimeConversion::largestSeconds && node.pose.allFinite() &&
           std::abs(node.pose.rotation().norm() - 1.0) <= unitTolerance;
}

std::vector<TimedPose> usablePoses(std::span<TrajectoryNode const> nodes, std::size_t& unusable)
{
    std::vector<TrajectoryNode const*> usable;
    for (TrajectoryNode const& node : nodes) {
        if (isUsable(node)) {
            usable.push_back(&node);
        }
    }
    unusable = nodes.size() - usable.size();
    return posesInOrderOfTime(std::move(usable));
}

/// The median of at least one number. Reorders the numbers.
double medianOf(std::vector<double>& numbers)
{
    auto const middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    if (numbers.size() % 2 == 1) {
        return *middle;
    }
    return *middle + (*std::max_element(numbers.begin(), middle) - *middle) / 2.0;
}

/// The median of one number of each pose.
template <typename Number>
double medianBy(Poses poses, Number const& number)
{
    std::vector<double> numbers(poses.size());
    std::ranges::transform(poses, numbers.begin(), number);
    return medianOf(numbers);
}

/// The median of each component.
TimedPose middleOf(Poses poses)
{
    TimedPose middle;
    middle.time = medianBy(poses, &TimedPose::time);
    for (Eigen::Index i = 0; i < 3; ++i) {
        middle.position[i] = medianBy(poses, [i](TimedPose const& pose) { return pose.position[i]; });
    }
    // A quaternion and its negative are the same rotation. The signs are chosen so that the component with
    // the largest median magnitude is positive, which no outlier can change.
    Eigen::Vector4d sizes;
    for (Eigen::Index i = 0; i < 4; ++i) {
        sizes[i] =
            medianBy(poses, [i](TimedPose const& pose) { return std::abs(pose.rotation.coeffs()[i]); });
    }
    Eigen::Index largest = 0;
    sizes.maxCoeff(&largest);
    for (Eigen::Index i = 0; i < 4; ++i) {
        middle.rotation.coeffs()[i] = medianBy(poses, [i, largest](TimedPose const& pose) {
            auto const& numbers = pose.rotation.coeffs();
            return numbers[largest] < 0.0 ? -numbers[i] : numbers[i];
        });
    }
    return middle;
}

/// The angle in degrees; infinite if a quaternion is too far from unit length.
double turnBetween(Quaterniond const& from, Quaterniond const& to)
{
    constexpr double shortest = 0.5;
    if (!(from.norm() > shortest && to.norm() > shortest)) {
        return std::numeric_limits<double>::infinity();
    }
    Quaterniond const turn = from.conjugate() * to;
    return 2.0 * std::atan2(turn.vec().norm(), std::abs(turn.w())) * 180.0 / std::numbers::pi;
}

bool isStillAt(double time, Poses poses, double half, StillSettings const& settings)
{
    // Near the two ends, the window is shifted so that it stays within the poses.
    double const centre = std::max(poses.front().time + half, std::min(time, poses.back().time - half));
    auto const begin = std::ranges::lower_bound(poses, centre - half, {}, &TimedPose::time);
    auto const middle = std::ranges::lower_bound(poses, centre, {}, &TimedPose::time);
    auto const end = std::ranges::upper_bound(poses, centre + half, {}, &TimedPose::time);
    if (begin == middle || middle == end) { // only by rounding
        return false;
    }
    TimedPose const before = middleOf({begin, middle});
    TimedPose const after = middleOf({middle, end});
    double const elapsed = after.time - before.time;
    return (after.position - before.position).norm() < settings.speed * elapsed &&
           turnBetween(before.rotation, after.rotation) < settings.rate * elapsed;
}

/// Adds the stretches in the poses between two gaps, which span a window at least.
void addStretches(AnchorSections& sections, Poses poses, double half, StillSettings const& settings)
{
    TimedPose const* from = nullptr; // of the current stretch
    TimedPose const* to = nullptr;
    auto const finish = [&] {
        if (from != nullptr && to->time - from->time >= settings.minSeconds) {
            sections.insertSection({TimeConversion::convertToIntegerTime(from->time),
                                    TimeConversion::convertToIntegerTime(to->time)});
        }
        from = nullptr;
    };
    double lastMeasured = -std::numeric_limits<double>::infinity();
    for (TimedPose const& pose : poses) {
        if (pose.time - lastMeasured < half / measurementsInHalf && &pose != &poses.back()) {
            continue;
        }
        lastMeasured = pose.time;
        if (isStillAt(pose.time, poses, half, settings)) {
            from = from == nullptr ? &pose : from;
            to = &pose;
        } else {
            finish();
        }
    }
    finish();
}

double halfFor(Poses poses)
{
    std::vector<double> steps;
    for (std::size_t i = 1; i < poses.size(); ++i) {
        steps.push_back(poses[i].time - poses[i - 1].time);
    }
    return steps.empty() ? shortestHalf : std::max(shortestHalf, stepsInHalf * medianOf(steps));
}

} // namespace

StillStretches findStillStretches(std::span<TrajectoryNode const> nodes, StillSettings const& settings)
{
    StillStretches result;
    std::vector<TimedPose> const poses = usablePoses(nodes, result.unusable);
    result.poses = poses.size();
    double const half = halfFor(poses);
    result.window = 2.0 * half;

    for (std::size_t first = 0, last = 0; first < poses.size(); first = ++last) {
        while (last + 1 < poses.size() && poses[last + 1].time - poses[last].time <= half) {
            ++last;
        }
        if (last + 1 < poses.size()) {
            ++result.gaps;
            result.largestGap = std::max(result.largestGap, poses[last + 1].time - poses[last].time);
        }
        double const known = poses[last].time - poses[first].time;
        if (known >= result.window) {
            result.measured += known;
            addStretches(result.sections, Poses(poses).subspan(first, last - first + 1), half, settings);
        }
    }
    return result;
}

} // namespace oV::Roamscan::tool
