#include "tools/io/RecordingFile.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/FileKind.h"
#include "tools/io/InputFile.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <algorithm>
#include <array>
#include <map>
#include <ostream>
#include <sstream>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t prefixSize = sizeof(std::uint64_t);

/// @throws ToolError if the length in the prefix exceeds the bytes available after it
void checkLength(std::uint64_t length,
                 std::uint64_t available,
                 std::filesystem::path const& path,
                 std::string const& kind)
{
    if (length > available) {
        throw fileError(path,
                        whatItIsOr(path,
                                   FileKind::RecordingStream,
                                   "ends early or is no " + kind + ": its length prefix is " +
                                       std::to_string(length) + " bytes, but " + std::to_string(available) +
                                       " bytes follow"));
    }
}

/// Reads the first stream from a pipe into memory, so that it can be read repeatedly. Memory is allocated for
/// the bytes that arrive, not for the length that the prefix promises.
InputFile buffered(InputFile& pipe, std::uint64_t length)
{
    constexpr std::size_t blockSize = 1U << 20;
    std::string bytes(prefixSize, '\0');
    std::ranges::copy(toLittleEndian(length), bytes.begin());
    while (pipe.stream && bytes.size() - prefixSize < length) {
        std::size_t const start = bytes.size();
        auto const wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(length - (start - prefixSize), blockSize));
        bytes.resize(start + wanted);
        pipe.stream.read(bytes.data() + start, static_cast<std::streamsize>(wanted));
        bytes.resize(start + static_cast<std::size_t>(pipe.stream.gcount()));
    }
    std::uint64_t const size = bytes.size();
    auto stream = std::make_unique<std::istringstream>(std::move(bytes), std::ios::binary);
    std::istream& opened = *stream;
    return {std::move(stream), opened, size};
}

/// Opens a file or a pipe. A length that does not fit the file is reported before memory is allocated for it.
InputFile openStream(std::filesystem::path const& path, std::string const& kind)
{
    constexpr std::uint64_t longest = 1ULL << 31U; // FlatBuffers' limit
    std::array<char, prefixSize> prefix{};
    InputFile file = openInputOrPipe(path);
    file.stream.read(prefix.data(), prefix.size());
    auto const found = static_cast<std::size_t>(file.stream.gcount());
    if (found < prefix.size()) {
        throw fileError(path,
                        whatItIsOr(path,
                                   FileKind::RecordingStream,
                                   "is too short for a " + kind + " (" + std::to_string(found) + " bytes)"));
    }
    std::uint64_t const length = fromLittleEndian(prefix);
    if (file.isRegular()) {
        checkLength(length, file.size - prefix.size(), path, kind);
        return file;
    }
    if (length > longest) {
        throw fileError(path,
                        "is no " + kind + ": its length prefix is " + std::to_string(length) +
                            " bytes, but a stream has at most 2 GiB");
    }
    InputFile whole = buffered(file, length);
    checkLength(length, whole.size - prefix.size(), path, kind);
    return whole;
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

/// @throws ToolError if the file is a stream of the `Other` kind, damaged, or anything else
template <typename Store, typename Other>
StoredStream<Store> readOnly(std::filesystem::path const& path,
                             std::string const& kind,
                             std::string const& otherKind,
                             char const* remedy)
{
    InputFile file = openStream(path, kind);
    auto stored = readFirst<Store>(file);
    if (!stored.data) {
        if (readFirst<Other>(file).data) {
            throw fileError(path, "this is a " + otherKind + " and no " + kind + "; see roamscan info");
        }
        throw fileError(
            path, whatItIsOr(path, FileKind::RecordingStream, "is damaged or no " + kind + "; " + remedy));
    }
    return stored;
}

} // namespace

TrajectoryFile readTrajectoryFile(std::filesystem::path const& path)
{
    return readOnly<TrajectoryData, SensorData>(
        path, "trajectory stream", "sensor stream", "`roamscan import` makes one from a text of poses");
}

SensorFile readSensorFile(std::filesystem::path const& path)
{
    return readOnly<SensorData, TrajectoryData>(
        path, "sensor stream", "trajectory stream", "`roamscan info` shows which kind of stream it is");
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
    throw fileError(path,
                    whatItIsOr(path,
                               FileKind::RecordingStream,
                               "is damaged, or neither a trajectory nor a sensor stream"));
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
