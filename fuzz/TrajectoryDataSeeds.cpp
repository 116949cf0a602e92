/// @file
/// Writes the seeds of the trajectory data target: small valid and invalid streams.

#include "StreamSeeds.h"

#include <roamscan/trajectorydata/TrajectoryData.h>
#include <roamscan/trajectorydata/TrajectoryFile_generated.h>

#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace
{

namespace schema = oV::Roamscan::TrajectorySchema;
using fuzz::asBuffer;
using fuzz::asStream;
using fuzz::bufferOf;
using fuzz::save;
using fuzz::streamOf;
using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;

TrajectoryData storeOf(std::vector<double> const& times)
{
    TrajectoryData store;
    for (double const time : times) {
        Eigen::Quaterniond const rotation(0.8, 0.0, 0.6, 0.0);
        store.nodes.emplace_back(time,
                                 TrafoT<double>({time, 2.0, 3.0}, rotation, true),
                                 static_cast<TrajectoryNode::Type>(3),
                                 Eigen::Matrix3d::Identity(),
                                 Eigen::Matrix3d::Constant(0.5),
                                 false);
    }
    store.devicePositions[Device::Device0] = TrafoT<double>::Translation({0.1, 0.2, 0.3});
    return store;
}

// A vector whose entries all refer to one table.
std::string sharedNodes(std::size_t count)
{
    flatbuffers::FlatBufferBuilder builder;
    schema::PoseRecord const pose(1.0, 2.0, 3.0, 1.0, 0.0, 0.0, 0.0);
    schema::Matrix3Record const matrix;
    auto const node = schema::CreateTrajectoryNodeRecord(builder, 4.0, &pose, 0, &matrix, &matrix, true);
    std::vector const nodes(count, node);
    builder.Finish(schema::CreateTrajectoryFile(builder, builder.CreateVector(nodes)));
    return bufferOf(builder);
}

std::string nodeWithoutPose()
{
    flatbuffers::FlatBufferBuilder builder;
    std::vector const nodes{schema::CreateTrajectoryNodeRecord(builder, 4.0)};
    builder.Finish(schema::CreateTrajectoryFile(builder, builder.CreateVector(nodes)));
    return bufferOf(builder);
}

// Two records of one device, and devices that the format does not define.
std::string unknownDevices()
{
    flatbuffers::FlatBufferBuilder builder;
    schema::PoseRecord const pose(1.0, 2.0, 3.0, 1.0, 0.0, 0.0, 0.0);
    std::vector<schema::DevicePositionRecord> const positions{{1, pose}, {1, pose}, {1000, pose}, {-7, pose}};
    auto const vector = builder.CreateVectorOfStructs(positions);
    builder.Finish(schema::CreateTrajectoryFile(builder, 0, vector));
    return bufferOf(builder);
}

// Moves everything after the first offset by four bytes. FlatBuffers accepts this, because it does not check
// the alignment of a vector's entries.
std::string misaligned(std::string bytes)
{
    bytes[0] = static_cast<char>(bytes[0] + 4);
    return bytes.insert(4, 4, '\0');
}

void saveAll(std::filesystem::path const& folder)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::string const several = streamOf(storeOf({3.0, 1.0, 2.0, 2.0}));
    auto const saveTimes = [&folder](char const* name, std::vector<double> const& times) {
        save(folder / name, asBuffer, bufferOf(streamOf(storeOf(times))));
    };

    fuzz::saveVariants(folder, streamOf(storeOf({1.25})), several);
    save(folder / "empty-store", asStream, streamOf(TrajectoryData()));
    save(folder / "several-nodes", asStream, several);
    saveTimes("several-nodes-buffer", {3.0, 1.0, 2.0, 2.0});
    saveTimes("special-times", {nan, infinity, -infinity, 0.0, -0.0});
    saveTimes("bursts", {0.0, 1e-9, 2e-9, 3e-9, 1e6, 1e6 + 1.0});
    save(folder / "shared-nodes", asBuffer, sharedNodes(12));
    save(folder / "many-shared-nodes", asBuffer, sharedNodes(300));
    save(folder / "node-without-pose", asBuffer, nodeWithoutPose());
    save(folder / "unknown-devices", asBuffer, unknownDevices());
    save(folder / "misaligned-devices", asBuffer, misaligned(unknownDevices()));
}

} // namespace

int main(int argc, char** argv)
{
    return fuzz::runSeeds(argc, argv, saveAll);
}
