#include <roamscan/streams/detail/FlatBufferSize.h>
#include <roamscan/trajectorydata/TrajectoryFile_generated.h>
#include <roamscan/trajectorydata/detail/TrajectoryBufferSize.h>

namespace oV::Roamscan::detail
{

namespace
{

using Offset = flatbuffers::uoffset_t;

void addNode(FlatBufferSize& size, TrajectoryNode const& node)
{
    if (node.time != 0.0) {
        size.addField<double>();
    }
    size.addField<TrajectorySchema::Matrix3Record>(); // matrixB
    size.addField<TrajectorySchema::Matrix3Record>(); // matrixA
    if (node.type != TrajectoryNode::Type::Default) {
        size.addField<std::uint32_t>();
    }
    size.addField<TrajectorySchema::PoseRecord>();
    if (node.flag) {
        size.addField<std::uint8_t>();
    }
    size.endTable();
}

} // namespace

std::uint64_t bufferSizeBound(TrajectoryData const& store)
{
    FlatBufferSize size;
    for (TrajectoryNode const& node : store.nodes) {
        addNode(size, node);
    }
    if (!store.nodes.empty()) {
        size.addVector<Offset>(store.nodes.size());
    }
    if (!store.devicePositions.empty()) {
        size.addVector<TrajectorySchema::DevicePositionRecord>(store.devicePositions.size());
    }
    size.addField<Offset>(); // nodes, devicePositions
    size.addField<Offset>();
    size.endTable();
    return size.bound();
}

} // namespace oV::Roamscan::detail
