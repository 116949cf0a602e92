/// @file
/// Reads and writes TrajectoryData, directly between store and buffer.

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/frame/platform/detail/UntouchedMemory.h>
#include <roamscan/streams/detail/FlatBufferRoot.h>
#include <roamscan/streams/detail/LengthPrefixedBuffer.h>
#include <roamscan/streams/detail/UnpackedSize.h>
#include <roamscan/streams/detail/WriteFlatBuffer.h>
#include <roamscan/trajectorydata/TrajectoryData.h>
#include <roamscan/trajectorydata/TrajectoryFile_generated.h>
#include <roamscan/trajectorydata/detail/TrajectoryBufferSize.h>

#include <cstddef>
#include <istream>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

namespace oV::Roamscan
{

namespace
{

TrajectorySchema::PoseRecord toRecord(TrafoT<double> const& pose)
{
    auto const [tx, ty, tz, qw, qx, qy, qz] = pose.serialize();
    return {tx, ty, tz, qw, qx, qy, qz};
}

TrajectorySchema::Matrix3Record toRecord(Eigen::Matrix<double, 3, 3> const& matrix)
{
    return TrajectorySchema::Matrix3Record(flatbuffers::span<double const, 9>(matrix.data(), 9));
}

TrafoT<double> fromRecord(TrajectorySchema::PoseRecord const& record)
{
    return {Eigen::Vector3d(record.tx(), record.ty(), record.tz()),
            Eigen::Quaterniond(record.qw(), record.qx(), record.qy(), record.qz()),
            true};
}

Eigen::Matrix<double, 3, 3> fromRecord(TrajectorySchema::Matrix3Record const& record)
{
    Eigen::Matrix<double, 3, 3> matrix;
    for (flatbuffers::uoffset_t i = 0; i < 9; ++i) {
        matrix.data()[i] = record.values()->Get(i);
    }
    return matrix;
}

void packStore(flatbuffers::FlatBufferBuilder& builder, TrajectoryData const& store)
{
    std::vector<flatbuffers::Offset<TrajectorySchema::TrajectoryNodeRecord>> nodes;
    nodes.reserve(store.nodes.size());
    for (TrajectoryNode const& node : store.nodes) {
        auto const pose = toRecord(node.pose);
        auto const matrixA = toRecord(node.matrixA);
        auto const matrixB = toRecord(node.matrixB);
        nodes.push_back(TrajectorySchema::CreateTrajectoryNodeRecord(
            builder, node.time, &pose, static_cast<std::uint32_t>(node.type), &matrixA, &matrixB, node.flag));
    }
    std::vector<TrajectorySchema::DevicePositionRecord> positions;
    positions.reserve(store.devicePositions.size());
    for (auto const& [device, pose] : store.devicePositions) {
        positions.emplace_back(static_cast<std::int32_t>(device), toRecord(pose));
    }

    // An empty vector is left out.
    flatbuffers::Offset<flatbuffers::Vector<flatbuffers::Offset<TrajectorySchema::TrajectoryNodeRecord>>>
        nodeVector;
    flatbuffers::Offset<flatbuffers::Vector<TrajectorySchema::DevicePositionRecord const*>> positionVector;
    if (!nodes.empty()) {
        nodeVector = builder.CreateVector(nodes);
    }
    if (!positions.empty()) {
        positionVector = builder.CreateVectorOfStructs(positions);
    }
    builder.Finish(TrajectorySchema::CreateTrajectoryFile(builder, nodeVector, positionVector));
}

// Nodes may share a table. The verifier limits their number, so their size needs no check.
static_assert(detail::largestTableCount * sizeof(TrajectoryNode) <= detail::UnpackedSize::alwaysUnpacked);

// Returns nothing if a node lacks a struct.
std::optional<std::vector<TrajectoryNode>> unpackNodes(TrajectorySchema::TrajectoryFile const& file)
{
    std::vector<TrajectoryNode> nodes;
    if (file.nodes() == nullptr) {
        return nodes;
    }
    nodes.reserve(file.nodes()->size());
    detail::preferLargePages(nodes.data(), nodes.capacity() * sizeof(TrajectoryNode));
    for (TrajectorySchema::TrajectoryNodeRecord const* const record : *file.nodes()) {
        if (record->pose() == nullptr || record->matrixA() == nullptr || record->matrixB() == nullptr) {
            return std::nullopt;
        }
        nodes.emplace_back(record->time(),
                           fromRecord(*record->pose()),
                           static_cast<TrajectoryNode::Type>(record->type()),
                           fromRecord(*record->matrixA()),
                           fromRecord(*record->matrixB()),
                           record->flag());
    }
    return nodes;
}

std::optional<Device> knownDevice(std::int32_t device)
{
    switch (static_cast<Device>(device)) {
    case Device::Device0:
    case Device::Device1:
    case Device::Device2:
    case Device::Device3:
        return static_cast<Device>(device);
    case Device::DeviceUnknown:
        break;
    }
    return std::nullopt;
}

void logUnknownDevice(std::int32_t device)
{
    constexpr int severity = 3;
    Bv_1_1::String message(L"Unknown device detected: ");
    message << device;
    Models::the().appendLogMsgExt(
        message, severity, "TrajectoryData", __LINE__, "oV::Roamscan::TrajectoryData::readFromStream");
}

// A later record of a device wins.
std::unordered_map<Device, TrafoT<double>> unpackDevicePositions(TrajectorySchema::TrajectoryFile const& file)
{
    std::unordered_map<Device, TrafoT<double>> positions;
    if (file.devicePositions() == nullptr) {
        return positions;
    }
    for (flatbuffers::uoffset_t i = 0; i < file.devicePositions()->size(); ++i) {
        auto const record = detail::structAt(*file.devicePositions(), i);
        if (auto const device = knownDevice(record.device())) {
            positions[*device] = fromRecord(record.pose());
        } else {
            logUnknownDevice(record.device());
        }
    }
    return positions;
}

} // namespace

std::shared_ptr<TrajectoryData> TrajectoryData::read(std::istream& stream)
{
    auto store = std::make_shared<TrajectoryData>();
    return store->readFromStream(stream) ? store : nullptr;
}

bool TrajectoryData::readFromStream(std::istream& stream)
{
    auto const frame = detail::readLengthPrefixed(stream);
    if (!frame) {
        return false;
    }
    auto const bytes = frame->bytes();
    auto const* const file = detail::verifiedRoot<TrajectorySchema::TrajectoryFile>(bytes);
    if (file == nullptr) {
        return false;
    }
    auto newNodes = unpackNodes(*file);
    if (!newNodes) {
        return false;
    }
    auto newPositions = unpackDevicePositions(*file);
    nodes = std::move(*newNodes);
    devicePositions = std::move(newPositions);
    return true;
}

bool TrajectoryData::write(std::ostream& stream) const
{
    return detail::writeFlatBuffer(
        stream, detail::bufferSizeBound(*this), [this](flatbuffers::FlatBufferBuilder& builder) {
            packStore(builder, *this);
        });
}

} // namespace oV::Roamscan
