#include "tools/io/TrajectoryFile.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <cstdint>
#include <ostream>
#include <set>
#include <vector>

namespace oV::Roamscan::tool
{

TrajectoryFile readTrajectoryFile(std::filesystem::path const& path)
{
    InputFile file = openFrame(path, "trajectory stream");
    auto result = readFirstFrame<TrajectoryData>(file);
    if (!result) {
        throw fileError(
            path, "is damaged or no trajectory stream; `roamscan import` makes one from a text of poses");
    }
    return *result;
}

void writeTrajectory(TrajectoryData const& data, std::ostream& stream, std::filesystem::path const& name)
{
    if (data.nodes.size() > largestNodeCount) {
        throw fileError(name,
                        std::to_string(data.nodes.size()) + " poses are more than the " +
                            std::to_string(largestNodeCount) +
                            " that a trajectory stream can be read back with");
    }
    if (!data.write(stream)) {
        throw fileError(name, "could not be written; is the disk full?");
    }
}

std::string listDevices(TrajectoryData const& data)
{
    std::set<Device> devices;
    for (auto const& [device, position] : data.devicePositions) {
        devices.insert(device);
    }
    std::vector<std::string> names;
    for (Device const device : devices) {
        names.push_back(std::to_string(static_cast<std::int32_t>(device)));
    }
    return listed(names);
}

} // namespace oV::Roamscan::tool
