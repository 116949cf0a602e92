#include "tools/io/RecordingFile.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <array>
#include <map>
#include <ostream>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

/// Opens a file. A length that does not fit the file is reported before memory is allocated for it.
InputFile openStream(std::filesystem::path const& path, std::string const& kind)
{
    std::array<char, sizeof(std::uint64_t)> prefix{};
    InputFile file = openInput(path);
    if (file.size < prefix.size()) {
        throw fileError(path, "is too short for a " + kind + " (" + std::to_string(file.size) + " bytes)");
    }
    file.stream.read(prefix.data(), prefix.size());
    std::uint64_t const length = fromLittleEndian(prefix);
    std::uint64_t const available = file.size - prefix.size();
    if (length > available) {
        throw fileError(path,
                        "ends early or is no " + kind + ": its length prefix is " + std::to_string(length) +
                            " bytes, but " + std::to_string(available) + " bytes follow");
    }
    return file;
}

/// Reads the stream at the start of the file; null data if there is none of this kind.
template <typename Store>
StoredStream<Store> readFirst(InputFile& file)
{
    file.stream.clear();
    file.stream.seekg(0);
    StoredStream<Store> stored;
    stored.data = Store::read(file.stream);
    if (stored.data) {
        stored.bytesAfter = file.size - static_cast<std::uint64_t>(file.stream.tellg());
    }
    return stored;
}

template <typename Store>
StoredStream<Store> readOnly(std::filesystem::path const& path, std::string const& kind, char const* remedy)
{
    InputFile file = openStream(path, kind);
    auto stored = readFirst<Store>(file);
    if (!stored.data) {
        throw fileError(path, "is damaged or no " + kind + "; " + remedy);
    }
    return stored;
}

} // namespace

TrajectoryFile readTrajectoryFile(std::filesystem::path const& path)
{
    return readOnly<TrajectoryData>(
        path, "trajectory stream", "`roamscan import` makes one from a text of poses");
}

SensorFile readSensorFile(std::filesystem::path const& path)
{
    return readOnly<SensorData>(path, "sensor stream", "`roamscan info` shows which kind of stream it is");
}

std::variant<TrajectoryFile, SensorFile> readRecordingFile(std::filesystem::path const& path)
{
    InputFile file = openStream(path, "trajectory or sensor stream");
    // A sensor stream without rangefinders is valid as a trajectory without nodes, but the nodes and
    // positions of a trajectory are not valid as sensors. So a trajectory is what is empty as a sensor
    // stream.
    SensorFile sensors = readFirst<SensorData>(file);
    if (sensors.data && tableCount(*sensors.data) > 1) {
        return sensors;
    }
    TrajectoryFile trajectory = readFirst<TrajectoryData>(file);
    if (trajectory.data) {
        return trajectory;
    }
    if (sensors.data) {
        return sensors;
    }
    throw fileError(path, "is damaged, or neither a trajectory nor a sensor stream");
}

void writeTrajectory(TrajectoryData const& data, std::ostream& stream, std::filesystem::path const& name)
{
    if (data.nodes.size() > largestNodeCount) {
        throw fileError(name,
                        std::to_string(data.nodes.size()) + " poses are more than the " +
                            std::to_string(largestNodeCount) +
                            " with which a trajectory stream can be read back");
    }
    if (!data.write(stream)) {
        throw fileError(name, "could not be written; is the disk full?");
    }
}

void writeSensors(SensorData const& data, std::ostream& stream, std::filesystem::path const& name)
{
    std::size_t const tables = tableCount(data);
    if (tables > largestTableCount) {
        throw fileError(name,
                        std::to_string(tables) + " tables are more than the " +
                            std::to_string(largestTableCount) +
                            " with which a sensor stream can be read back");
    }
    if (!data.write(stream)) {
        throw fileError(name,
                        stream ? "does not fit the 2 GiB of a sensor stream"
                               : "could not be written; is the disk full?");
    }
}

std::size_t tableCount(SensorData const& data)
{
    std::size_t count = 1 + data.sensorPoses.size();
    auto const add = [&](auto const& sensors) {
        for (auto const& [name, samples] : sensors) {
            count += 1 + samples.size();
        }
    };
    add(data.imuData);
    add(data.rangefinderData);
    return count;
}

std::string listDevices(TrajectoryData const& data)
{
    std::vector<std::string> names;
    for (auto const& [device, position] : std::map(data.devicePositions.begin(), data.devicePositions.end()))
    {
        names.push_back(std::to_string(static_cast<int>(device)));
    }
    return listed(names);
}

void requirePosition(TrajectoryData const& data, Device device, std::filesystem::path const& name)
{
    if (!data.devicePositions.contains(device)) {
        throw fileError(name,
                        "it has no position for device " + std::to_string(static_cast<int>(device)) +
                            "; devices with a position: " + listDevices(data));
    }
}

} // namespace oV::Roamscan::tool
