/// @file
/// Scan points in the global frame: one, against the same arithmetic without the interface; and many in one
/// call.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/Walk.h"

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/trajectory/SampleMany.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <tbb/global_control.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

namespace bench
{

namespace
{

constexpr int pointCount = 1'000'000;

// One line of points with their times, and the trajectory of the scanner.
class Scan : public oV::Roamscan::RoamscanDataAdapter
{
public:
    explicit Scan(std::size_t poses)
        : trajectory(oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(poses, Spacing::Even)))
    {
        std::mt19937_64 generator(23);
        std::uniform_real_distribution<float> coordinate(-12.0F, 12.0F);
        double const from = trajectory.getStartTime().get();
        double const step = (trajectory.getStopTime().get() - from) / pointCount;
        for (int i = 0; i < pointCount; ++i) {
            times_.push_back(std::llround((from + step * i) * 1e8) + 1);
            auto& point = points_.emplace_back();
            point.position = {coordinate(generator), coordinate(generator), coordinate(generator)};
            seconds.push_back(oV::Roamscan::TimeConversion::convertToSeconds(times_.back()));
            positions.push_back(point.position);
        }
        std::iota(columns.begin(), columns.end(), 0);
        std::vector<Bv_1_1::Vec3d<double>> places(pointCount);
        placePoints(trajectory, seconds, positions, places);
        for (int column = 0; column < pointCount; column += 1'000) {
            auto const plain = plainPosition(column);
            auto const ours = getGlobalScanPt(0, column, trajectory, nullptr).position;
            if (ours.x != plain.x || ours.y != plain.y || ours.z != plain.z) {
                throw std::logic_error("the interface and the arithmetic differ");
            }
            auto const& place = places[static_cast<std::size_t>(column)];
            if (!oV::Roamscan::toEigen(place).cast<float>().isApprox(oV::Roamscan::toEigen(ours), 1e-5F)) {
                throw std::logic_error("one point and many points in one call differ");
            }
        }
    }

    bool getScanPtTime(int /*line*/, int column, oV::Roamscan::IntegerTime* time) override
    {
        *time = times_[static_cast<std::size_t>(column)];
        return true;
    }

    ScanPoint getLocalScanPt(int /*line*/, int column, double const* /*parameters*/) override
    {
        return points_[static_cast<std::size_t>(column)];
    }

    // The position that getGlobalScanPt computes.
    [[nodiscard]] Bv_1_1::Vec3d<float> plainPosition(int column) const
    {
        auto const index = static_cast<std::size_t>(column);
        Pose const pose = trajectory.sample(times_[index]);
        Eigen::Vector3d const local = oV::Roamscan::toEigen(points_[index].position).cast<double>();
        Eigen::Vector3d const global = pose.rotation().toRotationMatrix() * local + pose.translation();
        return oV::Roamscan::toVec3d(global.cast<float>());
    }

    oV::Roamscan::Trajectory trajectory;
    std::vector<int> columns = std::vector<int>(pointCount);
    std::vector<double> seconds;
    std::vector<Bv_1_1::Vec3d<float>> positions;

private:
    std::vector<oV::Roamscan::IntegerTime> times_;
    std::vector<ScanPoint> points_;
};

// 50 points from one pose to the next, and 4.
constexpr std::size_t fewPoses = 20'000;
constexpr std::size_t densePoses = 250'000;

void throughInterface(benchmark::State& state)
{
    auto& scan = inputFor<Scan>(fewPoses);
    measureEach(state, scan.columns, [&scan](int column) {
        return scan.getGlobalScanPt(0, column, scan.trajectory, nullptr);
    });
}

void onlyArithmetic(benchmark::State& state)
{
    auto const& scan = inputFor<Scan>(fewPoses);
    measureEach(state, scan.columns, [&scan](int column) { return scan.plainPosition(column); });
}

void oneByOne(benchmark::State& state)
{
    auto& scan = inputFor<Scan>(densePoses);
    std::vector<Bv_1_1::Vec3d<float>> places(pointCount);
    timeEach(state, [&] {
        for (int column = 0; column < pointCount; ++column) {
            places[static_cast<std::size_t>(column)] =
                scan.getGlobalScanPt(0, column, scan.trajectory, nullptr).position;
        }
        return places.data();
    });
    state.SetItemsProcessed(state.iterations() * pointCount);
}

template <bool parallel>
void inOneCall(benchmark::State& state)
{
    auto const& scan = inputFor<Scan>(densePoses);
    std::vector<Bv_1_1::Vec3d<double>> places(pointCount);
    oV::Roamscan::PlacementSettings settings;
    settings.parallel = parallel;
    tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, 2);
    timeEach(state, [&] {
        return placePoints(scan.trajectory, scan.seconds, scan.positions, places, {}, settings);
    });
    state.SetItemsProcessed(state.iterations() * pointCount);
}

// A long recording: 5,000 points from one pose to the next.
struct LongScan
{
    explicit LongScan(std::size_t count)
        : trajectory(oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(fewPoses, Spacing::Even))),
          seconds(count),
          positions(count)
    {
        double const from = trajectory.getStartTime().get();
        double const step = (trajectory.getStopTime().get() - from) / static_cast<double>(count);
        for (std::size_t i = 0; i < count; ++i) {
            auto const index = static_cast<double>(i);
            seconds[i] = from + step * index;
            positions[i] = {12.0 * std::sin(index), 12.0 * std::cos(index), 2.0};
        }
    }

    oV::Roamscan::Trajectory trajectory;
    std::vector<double> seconds;
    std::vector<Bv_1_1::Vec3d<double>> positions;
};

constexpr std::size_t longScan = 100'000'000;

// Places the first points of a long recording in place, which saves memory. The points stay finite.
template <std::size_t count>
void firstPoints(benchmark::State& state)
{
    auto& scan = inputFor<LongScan>(longScan);
    std::span const positions = std::span(scan.positions).first(count);
    std::span const seconds = std::span(std::as_const(scan.seconds)).first(count);
    timeEach(state, [&] {
        auto const counts = placePoints(
            scan.trajectory, seconds, std::span<Bv_1_1::Vec3d<double> const>(positions), positions);
        if (counts.placed != count) {
            throw std::logic_error("not all points were placed");
        }
        return counts;
    });
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

} // namespace

Group scanPoints()
{
    return {"Scan points into the world",
            Cost::ProcessorTime,
            {{"1,000,000 points, 20,000 poses",
              megapointsPerSecond,
              {"getGlobalScanPt", throughInterface},
              {{"arithmetic only", onlyArithmetic, timesTheTime}}}}};
}

Group manyScanPoints()
{
    return {"Many scan points into the world in one call",
            Cost::ReportedTime,
            {{"1,000,000 points, 250,000 poses",
              megapointsPerSecond,
              {"placePoints", inOneCall<false>},
              {{"getGlobalScanPt", oneByOne, timesAsFast, 2.0}}},
             {"1,000,000 points, 250,000 poses, in parallel",
              megapointsPerSecond,
              {"two cores", inOneCall<true>},
              {{"one core", inOneCall<false>, timesAsFast, 1.8}}},
             {"100,000,000 points, 20,000 poses, in parallel",
              megapointsPerSecond,
              {"placePoints", firstPoints<longScan>},
              {{"100,000 points", firstPoints<100'000>, timesTheTime, 1.3}}}}};
}

} // namespace bench
