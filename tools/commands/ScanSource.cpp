#include "tools/commands/ScanSource.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/RecordingFile.h"
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

} // namespace oV::Roamscan::tool
