/// @file
/// A first plug-in: presents one rangefinder of a recording to the library, and places its points in the
/// global frame.

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using oV::Roamscan::Device;
using oV::Roamscan::RoamscanDataAdapter;
using oV::Roamscan::SampleMap;
using oV::Roamscan::SensorData;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;

namespace
{

// The first index of a point is that of its burst, the second one its index within the burst.
class Rangefinder final : public RoamscanDataAdapter
{
public:
    explicit Rangefinder(SampleMap<mapping::RangefinderData> const& samples)
    {
        for (auto const& [tick, burst] : samples) {
            bursts_.push_back(burst);
        }
    }

    bool getScanPtTime(int burst, int point, int64* time) override
    {
        double const start = at(burst).getTimeStamp().get();
        *time = convertToIntegerTime(start + static_cast<double>(pointsOf(burst)[index(point)].time));
        return true;
    }

    ScanPoint getLocalScanPt(int burst, int point, double const* /*parameters*/) override
    {
        auto const& [x, y, z] = pointsOf(burst)[index(point)].position;
        ScanPoint result;
        result.position = {x, y, z};
        result.intensity = 1; // marks a point that was placed
        return result;
    }

    [[nodiscard]] int burstCount() const { return static_cast<int>(bursts_.size()); }
    [[nodiscard]] int pointCount(int burst) const { return static_cast<int>(pointsOf(burst).size()); }

private:
    static std::size_t index(int number) { return static_cast<std::size_t>(number); }
    [[nodiscard]] mapping::RangefinderData const& at(int burst) const { return *bursts_[index(burst)]; }
    [[nodiscard]] std::vector<mapping::TimedRangefinderPoint> const& pointsOf(int burst) const
    {
        return at(burst).getRanges();
    }

    std::vector<std::shared_ptr<mapping::RangefinderData const>> bursts_;
};

} // namespace

int main(int argumentCount, char** arguments)
{
    std::string const folder = argumentCount > 1 ? arguments[1] : "walk";
    std::ifstream trajectoryStream(folder + "/walk.trajectory", std::ios::binary);
    std::ifstream sensorStream(folder + "/walk.sensors", std::ios::binary);
    auto const trajectoryData = TrajectoryData::read(trajectoryStream); // null if the stream is damaged
    auto const sensors = SensorData::read(sensorStream);
    if (!trajectoryData || !sensors || !sensors->rangefinderData.contains("scanner1")) {
        std::fprintf(stderr, "cannot read the recording in %s\n", folder.c_str());
        return 1;
    }

    // The poses of scanner 1, which is device 1, in the frame of device 0.
    auto const trajectory =
        trajectoryData->buildTrajectoryFromTrajectoryNodes(Device::Device1, Device::Device0);
    Rangefinder scanner(sensors->rangefinderData.at("scanner1"));
    int placed = 0;
    for (int burst = 0; burst < scanner.burstCount(); ++burst) {
        for (int point = 0; point < scanner.pointCount(burst); ++point) {
            auto const global = scanner.getGlobalScanPt(burst, point, trajectory, nullptr);
            if (global.intensity == 0) {
                continue; // the trajectory has no pose at the time of this point
            }
            if (placed++ == 0) {
                auto const& [x, y, z] = global.position;
                std::printf("the first point is at %.3f %.3f %.3f\n",
                            static_cast<double>(x),
                            static_cast<double>(y),
                            static_cast<double>(z));
            }
        }
    }
    std::printf("placed %d points\n", placed);
    return placed > 0 ? 0 : 1;
}
