/// @file
/// The seeds of the trajectory data target: small streams, sound and unsound ones, each behind the byte that
/// tells the target how to take it.

#include "Seeds.h"

#include <roamscan/frame/platform/LittleEndian.h>
#include <roamscan/trajectorydata/TrajectoryData.h>
#include <roamscan/trajectorydata/TrajectoryFile_generated.h>

#include <filesystem>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using fuzz::save;
namespace schema = oV::Roamscan::TrajectorySchema;
using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;

constexpr char asStream = 0;
constexpr char asInsideOfFrame = 1;
constexpr std::size_t countSize = 8;

std::string frameOf(TrajectoryData const& store)
{
    std::ostringstream stream;
    if (!store.write(stream)) {
        throw std::runtime_error("cannot write a store");
    }
    return stream.str();
}

std::string insideOf(std::string const& frame)
{
    return frame.substr(countSize);
}

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

std::string finished(flatbuffers::FlatBufferBuilder& builder)
{
    return {reinterpret_cast<char const*>(builder.GetBufferPointer()), builder.GetSize()};
}

// One table that the vector names again and again.
std::string sharedNodes(std::size_t count)
{
    flatbuffers::FlatBufferBuilder builder;
    schema::PoseRecord const pose(1.0, 2.0, 3.0, 1.0, 0.0, 0.0, 0.0);
    schema::Matrix3Record const matrix;
    auto const node = schema::CreateTrajectoryNodeRecord(builder, 4.0, &pose, 0, &matrix, &matrix, true);
    std::vector const nodes(count, node);
    builder.Finish(schema::CreateTrajectoryFile(builder, builder.CreateVector(nodes)));
    return finished(builder);
}

std::string nodeWithoutPose()
{
    flatbuffers::FlatBufferBuilder builder;
    std::vector const nodes{schema::CreateTrajectoryNodeRecord(builder, 4.0)};
    builder.Finish(schema::CreateTrajectoryFile(builder, builder.CreateVector(nodes)));
    return finished(builder);
}

// The second record of a device, and a device that the format does not know.
std::string oddDevices()
{
    flatbuffers::FlatBufferBuilder builder;
    schema::PoseRecord const pose(1.0, 2.0, 3.0, 1.0, 0.0, 0.0, 0.0);
    std::vector<schema::DevicePositionRecord> const positions{{1, pose}, {1, pose}, {1000, pose}, {-7, pose}};
    auto const vector = builder.CreateVectorOfStructs(positions);
    builder.Finish(schema::CreateTrajectoryFile(builder, 0, vector));
    return finished(builder);
}

// All that stands behind the first offset, four bytes further on: sound for FlatBuffers, which does not ask
// how the entries of a vector are aligned.
std::string misaligned(std::string bytes)
{
    bytes[0] = static_cast<char>(bytes[0] + 4);
    return bytes.insert(4, 4, '\0');
}

std::string withCount(std::uint64_t count, std::string const& inside)
{
    auto const bytes = oV::Roamscan::toLittleEndian(count);
    return std::string(bytes.begin(), bytes.end()) + inside;
}

void saveAll(std::filesystem::path const& folder)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::string const one = frameOf(storeOf({1.25}));
    std::string const several = frameOf(storeOf({3.0, 1.0, 2.0, 2.0}));

    save(folder / "empty-input", asStream, "");
    save(folder / "empty-frame", asStream, withCount(0, ""));
    save(folder / "empty-store", asStream, frameOf({}));
    save(folder / "one-node", asStream, one);
    save(folder / "one-node-inside", asInsideOfFrame, insideOf(one));
    save(folder / "several-nodes", asStream, several);
    save(folder / "several-nodes-inside", asInsideOfFrame, insideOf(several));
    save(folder / "odd-times",
         asInsideOfFrame,
         insideOf(frameOf(storeOf({nan, infinity, -infinity, 0.0, -0.0}))));
    save(folder / "bursts",
         asInsideOfFrame,
         insideOf(frameOf(storeOf({0.0, 1e-9, 2e-9, 3e-9, 1e6, 1e6 + 1.0}))));
    save(folder / "shared-nodes", asInsideOfFrame, sharedNodes(12));
    save(folder / "too-many-shared-nodes", asInsideOfFrame, sharedNodes(300));
    save(folder / "node-without-pose", asInsideOfFrame, nodeWithoutPose());
    save(folder / "odd-devices", asInsideOfFrame, oddDevices());
    save(folder / "misaligned-devices", asInsideOfFrame, misaligned(oddDevices()));
    save(folder / "truncated", asStream, one.substr(0, one.size() - 5));
    save(folder / "truncated-count", asStream, one.substr(0, 5));
    save(folder / "truncated-inside", asInsideOfFrame, insideOf(one).substr(0, 60));
    save(folder / "more-behind", asStream, one + several);
    save(folder / "count-too-large", asStream, withCount(one.size(), insideOf(one)));
    save(folder / "count-of-gigabytes", asStream, withCount(std::uint64_t{1} << 34U, insideOf(one)));
    save(folder / "count-beyond-all", asStream, withCount(~std::uint64_t{0}, insideOf(one)));
}

} // namespace

int main(int argc, char** argv)
{
    return fuzz::runSeeds(argc, argv, saveAll);
}
