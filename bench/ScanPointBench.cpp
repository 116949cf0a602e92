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
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::RoamscanDataAdapter;
using oV::Roamscan::Trajectory;

constexpr std::size_t poseCount = 20'000;
constexpr int pointsPerLine = 1'000;
constexpr int lineCount = 1'000;
constexpr std::size_t pointCount = std::size_t{pointsPerLine} * lineCount;

struct Place
{
    int line;
    int column;
};

// Points in lines, in the order in which a scanner records them.
class Scan : public RoamscanDataAdapter
{
public:
    Scan(double from, double to)
    {
        std::mt19937_64 generator(23);
        std::uniform_real_distribution<float> coordinate(-12.0F, 12.0F);
        for (std::size_t i = 0; i < pointCount; ++i) {
            double const seconds = from + (to - from) * static_cast<double>(i) / pointCount;
            times_.push_back(std::llround(seconds * 1e8) + 1);
            ScanPoint point{};
            point.position = {coordinate(generator), coordinate(generator), coordinate(generator)};
            point.intensity = static_cast<std::uint16_t>(i);
            points_.push_back(point);
        }
    }

    bool getScanPtTime(int line, int column, oV::Roamscan::IntegerTime* time) override
    {
        *time = times_[indexOf({line, column})];
        return true;
    }

    ScanPoint getLocalScanPt(int line, int column, double const* /*parameters*/) override
    {
        return points_[indexOf({line, column})];
    }

    // What getGlobalScanPt computes.
    [[nodiscard]] Bv_1_1::Vec3d<float> globalPosition(Place place, Trajectory const& trajectory) const
    {
        Pose const pose = trajectory.sample(times_[indexOf(place)]);
        Eigen::Vector3d const local = oV::Roamscan::toEigen(points_[indexOf(place)].position).cast<double>();
        Eigen::Vector3d const global = pose.rotation().toRotationMatrix() * local + pose.translation();
        return oV::Roamscan::toVec3d(global.cast<float>());
    }

private:
    static std::size_t indexOf(Place place)
    {
        return static_cast<std::size_t>(place.line) * pointsPerLine + static_cast<std::size_t>(place.column);
    }

    std::vector<oV::Roamscan::IntegerTime> times_;
    std::vector<ScanPoint> points_;
};

struct Input
{
    Input()
        : trajectory(oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(poseCount, Spacing::Even))),
          scan(trajectory.getStartTime().get(), trajectory.getStopTime().get())
    {
        for (int line = 0; line < lineCount; ++line) {
            for (int column = 0; column < pointsPerLine; ++column) {
                places.push_back({line, column});
            }
            auto const plain = scan.globalPosition({line, 0}, trajectory);
            auto const ours = scan.getGlobalScanPt(line, 0, trajectory, nullptr).position;
            if (ours.x != plain.x || ours.y != plain.y || ours.z != plain.z) {
                throw std::logic_error("the interface and the arithmetic differ");
            }
        }
    }

    Trajectory trajectory;
    Scan scan;
    std::vector<Place> places;
};

Input& input()
{
    static Input all;
    return all;
}

void throughInterface(benchmark::State& state)
{
    measureEach(state, input().places, [&all = input()](Place place) {
        return all.scan.getGlobalScanPt(place.line, place.column, all.trajectory, nullptr);
    });
}

void onlyArithmetic(benchmark::State& state)
{
    measureEach(state, input().places, [&all = input()](Place place) {
        return all.scan.globalPosition(place, all.trajectory);
    });
}

} // namespace

Group scanPoints()
{
    return {"Scan points into the world",
            Cost::ProcessorTime,
            {{withCommas(pointCount) + " points, " + withCommas(poseCount) + " poses",
              megapointsPerSecond,
              {"getGlobalScanPt", throughInterface},
              {{"arithmetic only", onlyArithmetic, Ratio::TimesTheTime}}}}};
}

} // namespace bench
