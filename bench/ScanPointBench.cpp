/// @file
/// Scan points into the world: against the arithmetic alone, written down without the interface.

#include "Benchmarks.h"
#include "bench/workload/Walk.h"

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::RoamscanDataAdapter;
using oV::Roamscan::toEigen;
using oV::Roamscan::toVec3d;
using oV::Roamscan::Trajectory;

constexpr std::size_t poseCount = 20'000;
constexpr int pointsPerLine = 1'000;
constexpr int lineCount = 1'000;
constexpr int repetitions = 9;

// Lines of points as a scanner gives them, one after the other.
class Scan : public RoamscanDataAdapter
{
public:
    Scan(double from, double to)
    {
        constexpr std::size_t count = std::size_t{pointsPerLine} * lineCount;
        std::mt19937_64 generator(23);
        std::uniform_real_distribution<float> coordinate(-12.0F, 12.0F);
        for (std::size_t i = 0; i < count; ++i) {
            double const seconds = from + (to - from) * static_cast<double>(i) / count;
            times_.push_back(std::llround(seconds * 1e8) + 1);
            ScanPoint point{};
            point.position = {coordinate(generator), coordinate(generator), coordinate(generator)};
            point.intensity = static_cast<std::uint16_t>(i);
            points_.push_back(point);
        }
    }

    bool getScanPtTime(int line, int column, oV::Roamscan::IntegerTime* time) override
    {
        *time = times_[indexOf(line, column)];
        return true;
    }

    ScanPoint getLocalScanPt(int line, int column, double const* /*parameters*/) override
    {
        return points_[indexOf(line, column)];
    }

    [[nodiscard]] std::vector<oV::Roamscan::IntegerTime> const& times() const { return times_; }
    [[nodiscard]] std::vector<ScanPoint> const& points() const { return points_; }

private:
    static std::size_t indexOf(int line, int column)
    {
        return static_cast<std::size_t>(line) * pointsPerLine + static_cast<std::size_t>(column);
    }

    std::vector<oV::Roamscan::IntegerTime> times_;
    std::vector<ScanPoint> points_;
};

Bv_1_1::Vec3d<float> moved(Scan const& scan, std::size_t index, Trajectory const& trajectory)
{
    Pose const pose = trajectory.sample(scan.times()[index]);
    Eigen::Vector3d const local = toEigen(scan.points()[index].position).cast<double>();
    Eigen::Vector3d const global = pose.rotation().toRotationMatrix() * local + pose.translation();
    return toVec3d(global.cast<float>());
}

struct Inputs
{
    Inputs()
        : trajectory(oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(poseCount, Spacing::Even))),
          scan(trajectory.getStartTime().get(), trajectory.getStopTime().get())
    {
        for (int line = 0; line < lineCount; ++line) {
            auto const plain = moved(scan, static_cast<std::size_t>(line) * pointsPerLine, trajectory);
            auto const ours = scan.getGlobalScanPt(line, 0, trajectory, nullptr).position;
            if (ours.x != plain.x || ours.y != plain.y || ours.z != plain.z) {
                throw std::logic_error("the interface and the arithmetic differ");
            }
        }
    }

    Trajectory trajectory;
    Scan scan;
};

Inputs& inputs()
{
    static Inputs all;
    return all;
}

void throughInterface(benchmark::State& state)
{
    auto& [trajectory, scan] = inputs();
    for ([[maybe_unused]] auto _ : state) {
        for (int line = 0; line < lineCount; ++line) {
            for (int column = 0; column < pointsPerLine; ++column) {
                auto const point = scan.getGlobalScanPt(line, column, trajectory, nullptr);
                benchmark::DoNotOptimize(&point);
                benchmark::ClobberMemory();
            }
        }
    }
}

void byArithmeticAlone(benchmark::State& state)
{
    auto const& [trajectory, scan] = inputs();
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < scan.points().size(); ++i) {
            auto const position = moved(scan, i, trajectory);
            benchmark::DoNotOptimize(&position);
            benchmark::ClobberMemory();
        }
    }
}

} // namespace

std::vector<Comparison> scanPointBenchmarks()
{
    constexpr std::size_t pointCount = std::size_t{pointsPerLine} * lineCount;
    Workload const points{static_cast<double>(pointCount)};
    return {{"Scan points into the world",
             withCommas(pointCount) + " points, " + withCommas(poseCount) + " poses",
             megapointsPerSecond,
             repetitions,
             timedLoop("getGlobalScanPt", "points/interface", points, throughInterface),
             {Baseline{timedLoop("arithmetic alone", "points/arithmetic", points, byArithmeticAlone),
                       Ratio::TimesTheTime}}}};
}

} // namespace bench
