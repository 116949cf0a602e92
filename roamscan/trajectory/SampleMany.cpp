#include <roamscan/frame/platform/detail/ParallelTasks.h>
#include <roamscan/trajectory/SampleMany.h>
#include <roamscan/trajectory/detail/PoseSource.h>

#include <Eigen/Core>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

namespace oV::Roamscan
{

namespace
{

using Bv_1_1::Vec3d;
using detail::PoseState;

// Points of one task: enough to make the overhead of scheduling it negligible.
constexpr std::size_t pointsOfOneTask = 16384;

void requireSameSize(bool same)
{
    if (!same) {
        throw std::invalid_argument("The spans of times, points and results differ in size");
    }
}

bool isFinite(Eigen::Vector3d const& vector)
{
    return std::isfinite(vector.x()) && std::isfinite(vector.y()) && std::isfinite(vector.z());
}

// Transforms a point by the pose at its time. `place` is unchanged unless the result is Placed.
template <typename Poses, typename Scalar>
PointPlacement placeOne(Poses& poses, double time, Vec3d<Scalar> const& point, Vec3d<double>& place)
{
    Eigen::Vector3d const local(point.x, point.y, point.z);
    if (!isFinite(local)) {
        return PointPlacement::NotFinite;
    }
    switch (poses.goTo(time)) {
    case PoseState::Outside:
        return std::isnan(time) ? PointPlacement::NotFinite : PointPlacement::Outside;
    case PoseState::InGap:
        return PointPlacement::InGap;
    case PoseState::Found:
        break;
    }
    Eigen::Vector3d const global = poses.transform(local);
    if (!isFinite(global)) {
        return PointPlacement::NotFinite;
    }
    place = {global.x(), global.y(), global.z()};
    return PointPlacement::Placed;
}

/// The spans of a call, or of a part of it.
template <typename Scalar>
struct PointSpans
{
    std::span<double const> times;
    std::span<Vec3d<Scalar> const> points;
    std::span<Vec3d<double>> places;
    std::span<PointPlacement> placements;

    [[nodiscard]] PointSpans part(std::size_t first, std::size_t count) const
    {
        return {times.subspan(first, count),
                points.subspan(first, count),
                places.subspan(first, count),
                placements.empty() ? placements : placements.subspan(first, count)};
    }
};

using Counts = std::array<std::size_t, 4>; // by the values of PointPlacement

template <typename Scalar>
void note(PointPlacement placement, std::size_t index, PointSpans<Scalar> const& spans, Counts& counts)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    if (placement != PointPlacement::Placed) {
        spans.places[index] = {nan, nan, nan};
    }
    ++counts[static_cast<std::size_t>(placement)];
    if (!spans.placements.empty()) {
        spans.placements[index] = placement;
    }
}

template <typename Poses, typename Scalar>
void placeEach(Poses& poses, PointSpans<Scalar> const& spans, Counts& counts)
{
    for (std::size_t i = 0; i < spans.times.size(); ++i) {
        note(placeOne(poses, spans.times[i], spans.points[i], spans.places[i]), i, spans, counts);
    }
}

// Places points at times for which TablePoses::goToMany() was called.
template <typename Scalar>
void placeTogether(detail::TablePoses const& poses, PointSpans<Scalar> const& spans, Counts& counts)
{
    poses.transformMany(spans.times, spans.points, spans.places);
    // Each coordinate of a place is a sum with the same coordinate of the point, so the place of a point
    // that is not finite is not finite either.
    auto const finite = [](Vec3d<double> const& place) {
        return isFinite(Eigen::Vector3d(place.x, place.y, place.z));
    };
    if (std::ranges::all_of(spans.places, finite)) {
        counts[static_cast<std::size_t>(PointPlacement::Placed)] += spans.places.size();
        std::ranges::fill(spans.placements, PointPlacement::Placed);
        return;
    }
    for (std::size_t i = 0; i < spans.places.size(); ++i) {
        note(finite(spans.places[i]) ? PointPlacement::Placed : PointPlacement::NotFinite, i, spans, counts);
    }
}

template <typename Scalar>
Counts placeInTurn(detail::CalledPoses poses, PointSpans<Scalar> const& spans)
{
    Counts counts{};
    placeEach(poses, spans, counts);
    return counts;
}

template <typename Scalar>
Counts placeInTurn(detail::TablePoses poses, PointSpans<Scalar> const& spans)
{
    Counts counts{};
    for (std::size_t i = 0; i < spans.times.size();) {
        std::size_t const together = poses.goToMany(spans.times.subspan(i));
        if (together > 0) {
            placeTogether(poses, spans.part(i, together), counts);
            i += together;
        } else {
            placeEach(poses, spans.part(i, 1), counts);
            ++i;
        }
    }
    return counts;
}

template <typename Scalar>
PlacementCounts
place(Trajectory const& trajectory, PointSpans<Scalar> const& spans, PlacementSettings const& settings)
{
    std::size_t const count = spans.times.size();
    requireSameSize(spans.points.size() == count && spans.places.size() == count &&
                    (spans.placements.empty() || spans.placements.size() == count));
    std::size_t const tasks =
        settings.parallel ? (count + pointsOfOneTask - 1) / pointsOfOneTask : std::min<std::size_t>(count, 1);
    std::vector<Counts> countsOfTasks(tasks);
    PoseSource::with(trajectory, settings.longestGap, [&](auto const& makePoses) {
        if (!settings.parallel && tasks == 1) {
            countsOfTasks[0] = placeInTurn(makePoses(), spans);
            return;
        }
        detail::inParallel(tasks, [&](std::size_t task) {
            std::size_t const first = task * pointsOfOneTask;
            countsOfTasks[task] =
                placeInTurn(makePoses(), spans.part(first, std::min(pointsOfOneTask, count - first)));
        });
    });
    Counts sum{};
    for (Counts const& counts : countsOfTasks) {
        std::transform(sum.begin(), sum.end(), counts.begin(), sum.begin(), std::plus<>());
    }
    return {sum[0], sum[1], sum[2], sum[3]};
}

} // namespace

std::size_t
samplePoses(Trajectory const& trajectory, std::span<double const> times, std::span<TrafoT<double>> poses)
{
    requireSameSize(times.size() == poses.size());
    return PoseSource::with(trajectory, std::numeric_limits<double>::infinity(), [&](auto const& makePoses) {
        auto source = makePoses();
        std::size_t without = 0;
        for (std::size_t i = 0; i < times.size(); ++i) {
            bool const found = source.goTo(times[i]) == PoseState::Found;
            poses[i] = found ? source.pose() : TrafoT<double>::Invalid();
            without += found ? 0 : 1;
        }
        return without;
    });
}

PlacementCounts placePoints(Trajectory const& trajectory,
                            std::span<double const> times,
                            std::span<Vec3d<double> const> points,
                            std::span<Vec3d<double>> places,
                            std::span<PointPlacement> placements,
                            PlacementSettings const& settings)
{
    return place<double>(trajectory, {times, points, places, placements}, settings);
}

PlacementCounts placePoints(Trajectory const& trajectory,
                            std::span<double const> times,
                            std::span<Vec3d<float> const> points,
                            std::span<Vec3d<double>> places,
                            std::span<PointPlacement> placements,
                            PlacementSettings const& settings)
{
    return place<float>(trajectory, {times, points, places, placements}, settings);
}

} // namespace oV::Roamscan
