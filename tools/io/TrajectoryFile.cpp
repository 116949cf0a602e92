#include "tools/io/TrajectoryFile.h"

#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"

#include <array>
#include <ostream>
#include <set>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::uint64_t countSize = 8; // the byte count in front of a frame

/// Tells a length that does not fit the file before the library makes room for it. The file is left at its
/// start.
void checkFrameLength(InputFile& file, std::filesystem::path const& path)
{
    if (file.size < countSize) {
        throw fileError(path,
                        "is too short for a trajectory stream (" + std::to_string(file.size) + " bytes)");
    }
    std::array<unsigned char, countSize> bytes{};
    file.stream.read(reinterpret_cast<char*>(bytes.data()), countSize);
    std::uint64_t promised = 0;
    for (std::size_t i = 0; i < countSize; ++i) {
        promised |= std::uint64_t{bytes[i]} << (8 * i);
    }
    if (promised > file.size - countSize) {
        throw fileError(path,
                        "ends early or is no trajectory stream: its frame promises " +
                            std::to_string(promised) + " bytes, " + std::to_string(file.size - countSize) +
                            " are there");
    }
    file.stream.seekg(0);
}

} // namespace

TrajectoryFile readTrajectoryFile(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    checkFrameLength(file, path);
    TrajectoryFile result;
    result.data = TrajectoryData::read(file.stream);
    if (!result.data) {
        throw fileError(
            path, "is damaged or no trajectory stream; `roamscan import` makes one from a text of poses");
    }
    result.bytesBehind = file.size - static_cast<std::uint64_t>(file.stream.tellg());
    return result;
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
    std::string list;
    for (Device const device : devices) {
        bool const last = device == *devices.rbegin();
        list += list.empty() ? "" : (last ? " and " : ", ");
        list += std::to_string(static_cast<std::int32_t>(device));
    }
    return list.empty() ? "none" : list;
}

} // namespace oV::Roamscan::tool
