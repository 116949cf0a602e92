#include "tools/commands/ScanSource.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/RecordingFile.h"
#include "tools/mounts/RangefinderMount.h"
#include "tools/placing/RangefinderReader.h"

#include <algorithm>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

std::string chooseRangefinder(SensorData const& data,
                              std::filesystem::path const& sensors,
                              std::optional<std::string> const& rangefinder)
{
    std::vector<std::string> names;
    for (auto const& [name, samples] : data.rangefinderData) {
        names.push_back(name);
    }
    std::ranges::sort(names);
    if (names.empty()) {
        throw fileError(sensors, "there is no rangefinder in it");
    }
    std::string name = rangefinder.value_or(names.front());
    if (!data.rangefinderData.contains(name)) {
        std::ranges::transform(names, names.begin(), excerpt);
        throw fileError(sensors, "it has no rangefinder " + excerpt(name) + "; there are: " + listed(names));
    }
    if (data.posesApplied && data.sensorPoses.contains(name)) {
        throw fileError(sensors,
                        "the samples of " + excerpt(name) +
                            " are already rotated by its pose; give the stream as it was recorded");
    }
    return name;
}

} // namespace

ScanSource openRangefinder(std::filesystem::path const& sensors,
                           std::optional<std::string> const& rangefinder)
{
    auto const data = readSensorFile(sensors).data;
    std::string const name = chooseRangefinder(*data, sensors, rangefinder);
    return {sensors, data, std::make_unique<RangefinderReader>(data->rangefinderData.at(name)), name};
}

Device deviceOf(ScanSource const& scan, TrajectoryData const& trajectory)
{
    std::string const name = excerpt(scan.rangefinder);
    if (!scan.data->sensorPoses.contains(scan.rangefinder)) {
        throw fileError(scan.name, "it has no pose of " + name + ", so give its device with --from");
    }
    auto const devices = devicesOfRangefinder(trajectory, *scan.data, scan.rangefinder);
    if (devices.empty()) {
        throw fileError(scan.name,
                        "the pose of " + name + " is the position of no device (devices with a position: " +
                            listDevices(trajectory) +
                            "); give the device with --from, or set its position with roamscan mount");
    }
    if (devices.size() > 1) {
        throw fileError(scan.name,
                        "the pose of " + name + " is the position of the " + namesOf(devices) +
                            "; give one of them with --from");
    }
    return devices.front();
}

} // namespace oV::Roamscan::tool
