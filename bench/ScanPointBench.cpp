/// @file
/// Scan points in the global frame, against the same arithmetic without the interface.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/Walk.h"

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <cmath>
#include <numeric>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

constexpr int pointCount = 1'000'000;

// One line of points with their times, and the trajectory of the scanner.
class Scan : public oV::Roamscan::RoamscanDataAdapter
{
public:
    Scan()
    {
        std::mt19937_64 generator(23);
        std::uniform_real_distribution<float> coordinate(-12.0F, 12.0F);
        double const from = trajectory.getStartTime().get();
        double const step = (trajectory.getStopTime().get() - from) / pointCount;
        for (int i = 0; i < pointCount; ++i) {
            times_.push_back(std::llround((from + step * i) * 1e8) + 1);
            auto& point = points_.emplace_back();
            point.position = {coordinate(generator), coordinate(generator), coordinate(generator)};
        }
        std::iota(columns.begin(), columns.end(), 0);
        for (int column = 0; column < pointCount; column += 1'000) {
            auto const plain = plainPosition(column);
            auto const ours = getGlobalScanPt(0, column, trajectory, nullptr).position;
            if (ours.x != plain.x || ours.y != plain.y || ours.z != plain.z) {
                throw std::logic_error("the interface and the arithmetic differ");
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

    oV::Roamscan::Trajectory trajectory =
        oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(20'000, Spacing::Even));
    std::vector<int> columns = std::vector<int>(pointCount);

private:
    std::vector<oV::Roamscan::IntegerTime> times_;
    std::vector<ScanPoint> points_;
};

Scan& scan()
{
    static Scan only;
    return only;
}

void throughInterface(benchmark::State& state)
{
    measureEach(state, scan().columns, [&all = scan()](int column) {
        return all.getGlobalScanPt(0, column, all.trajectory, nullptr);
    });
}

void onlyArithmetic(benchmark::State& state)
{
    measureEach(state, scan().columns, [&all = scan()](int column) { return all.plainPosition(column); });
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

} // namespace bench
