#include "tools/io/SensorFile.h"

#include "tools/console/ToolError.h"

#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

SensorFile readSensorFile(std::filesystem::path const& path)
{
    InputFile file = openFrame(path, "sensor stream");
    auto result = readFirstFrame<SensorData>(file);
    if (!result) {
        throw fileError(path,
                        "is damaged or no sensor stream; `roamscan info` tells what kind of stream it is");
    }
    return *result;
}

void writeSensors(SensorData const& data, std::ostream& stream, std::filesystem::path const& name)
{
    std::size_t const tables = tableCount(data);
    if (tables > largestTableCount) {
        throw fileError(name,
                        std::to_string(tables) + " tables are more than the " +
                            std::to_string(largestTableCount) +
                            " that a sensor stream can be read back with");
    }
    if (!data.write(stream)) {
        throw fileError(name,
                        stream ? "does not fit the 2 GiB of a sensor stream"
                               : "could not be written; is the disk full?");
    }
}

std::size_t tableCount(SensorData const& data)
{
    std::size_t count = 1 + data.imuData.size() + data.rangefinderData.size() + data.sensorPoses.size();
    for (auto const& [name, samples] : data.imuData) {
        count += samples.size();
    }
    for (auto const& [name, samples] : data.rangefinderData) {
        count += samples.size();
    }
    return count;
}

} // namespace oV::Roamscan::tool
