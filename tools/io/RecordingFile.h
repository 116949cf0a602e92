#pragma once

#include <roamscan/sensors/SensorData.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <variant>

/// Files of trajectory and sensor streams: a 64-bit little-endian length, then a buffer of as many bytes. All
/// readers take "-" for the standard input, and named pipes.
namespace oV::Roamscan::tool
{

/// The largest number of tables, the root included, with which a stream can be read back.
inline constexpr std::size_t largestTableCount = 1'000'000;

/// The largest number of nodes with which a trajectory stream can be read back.
inline constexpr std::size_t largestNodeCount = largestTableCount - 1;

/// The first stream in a file.
template <typename Store>
struct StoredStream
{
    std::shared_ptr<Store> data;  ///< Never null.
    std::uint64_t bytesAfter = 0; ///< Bytes of the file after the stream; 0 for a pipe.
};

using TrajectoryFile = StoredStream<TrajectoryData>;
using SensorFile = StoredStream<SensorData>;

/// @throws ToolError if the file cannot be opened or holds no valid trajectory stream
[[nodiscard]] TrajectoryFile readTrajectoryFile(std::filesystem::path const& path);

/// @throws ToolError if the file cannot be opened or holds no valid sensor stream
[[nodiscard]] SensorFile readSensorFile(std::filesystem::path const& path);

/// Recognises the kind of stream by its content. An empty stream is valid as both kinds, and counts as a
/// trajectory.
/// @throws ToolError if the file cannot be opened or holds neither kind
[[nodiscard]] std::variant<TrajectoryFile, SensorFile> readRecordingFile(std::filesystem::path const& path);

/// Writes a stream. `name` is the file's name for messages.
/// @throws ToolError if the stream cannot be written, or has more nodes than can be read back
void writeTrajectory(TrajectoryData const& data, std::ostream& stream, std::filesystem::path const& name);

/// Writes a stream. `name` is the file's name for messages.
/// @throws ToolError if the stream cannot be written, or has more tables than can be read back
void writeSensors(SensorData const& data, std::ostream& stream, std::filesystem::path const& name);

/// The number of tables of the store in a stream: the root, and one for each sensor, sample and pose.
[[nodiscard]] std::size_t tableCount(SensorData const& data);

/// The devices with a position: "0, 1 and 3", or "none".
[[nodiscard]] std::string listDevices(TrajectoryData const& data);

/// `name` is the file's name for messages.
/// @throws ToolError if the device has no position
void requirePosition(TrajectoryData const& data, Device device, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
