#include "tools/io/RecordingFile.h"

#include "tools/console/ToolError.h"

namespace oV::Roamscan::tool
{

namespace
{

bool holdsSomething(SensorData const& data)
{
    return !data.imuData.empty() || !data.rangefinderData.empty() || !data.sensorPoses.empty();
}

} // namespace

RecordingFile readRecordingFile(std::filesystem::path const& path)
{
    InputFile file = openFrame(path, "trajectory or sensor stream");
    // In this order: a sensor stream without rangefinders passes for a trajectory without nodes, but the
    // nodes and positions of a trajectory do not pass for sensors.
    auto sensors = readFirstFrame<SensorData>(file);
    if (sensors && holdsSomething(*sensors->data)) {
        return *sensors;
    }
    if (auto trajectory = readFirstFrame<TrajectoryData>(file)) {
        return *trajectory;
    }
    if (sensors) {
        return *sensors;
    }
    throw fileError(path, "is damaged, or neither a trajectory nor a sensor stream");
}

} // namespace oV::Roamscan::tool
