#include "bench/baselines/ObjectTrees.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace bench
{

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;

oV::Roamscan::TrajectorySchema::PoseRecord toRecord(TrafoT<double> const& pose)
{
    auto const [tx, ty, tz, qw, qx, qy, qz] = pose.serialize();
    return {tx, ty, tz, qw, qx, qy, qz};
}

oV::Roamscan::TrajectorySchema::Matrix3Record toRecord(Eigen::Matrix3d const& matrix)
{
    return oV::Roamscan::TrajectorySchema::Matrix3Record(
        flatbuffers::span<double const, 9>(matrix.data(), 9));
}

TrafoT<double> fromRecord(oV::Roamscan::TrajectorySchema::PoseRecord const& record)
{
    return {Eigen::Vector3d(record.tx(), record.ty(), record.tz()),
            Eigen::Quaterniond(record.qw(), record.qx(), record.qy(), record.qz()),
            true};
}

Eigen::Matrix3d fromRecord(oV::Roamscan::TrajectorySchema::Matrix3Record const& record)
{
    Eigen::Matrix3d matrix;
    std::copy(record.values()->begin(), record.values()->end(), matrix.data());
    return matrix;
}

} // namespace

oV::Roamscan::TrajectorySchema::TrajectoryFileT toTree(TrajectoryData const& store)
{
    oV::Roamscan::TrajectorySchema::TrajectoryFileT tree;
    tree.nodes.reserve(store.nodes.size());
    for (TrajectoryNode const& node : store.nodes) {
        auto record = std::make_unique<oV::Roamscan::TrajectorySchema::TrajectoryNodeRecordT>();
        record->time = node.time;
        record->pose = std::make_unique<oV::Roamscan::TrajectorySchema::PoseRecord>(toRecord(node.pose));
        record->type = static_cast<std::uint32_t>(node.type);
        record->matrixA =
            std::make_unique<oV::Roamscan::TrajectorySchema::Matrix3Record>(toRecord(node.matrixA));
        record->matrixB =
            std::make_unique<oV::Roamscan::TrajectorySchema::Matrix3Record>(toRecord(node.matrixB));
        record->flag = node.flag;
        tree.nodes.push_back(std::move(record));
    }
    for (auto const& [device, pose] : store.devicePositions) {
        tree.devicePositions.emplace_back(static_cast<std::int32_t>(device), toRecord(pose));
    }
    return tree;
}

std::shared_ptr<TrajectoryData> fromTree(oV::Roamscan::TrajectorySchema::TrajectoryFileT const& tree)
{
    auto store = std::make_shared<TrajectoryData>();
    store->nodes.reserve(tree.nodes.size());
    for (auto const& record : tree.nodes) {
        if (!record->pose || !record->matrixA || !record->matrixB) {
            return nullptr;
        }
        store->nodes.emplace_back(record->time,
                                  fromRecord(*record->pose),
                                  static_cast<TrajectoryNode::Type>(record->type),
                                  fromRecord(*record->matrixA),
                                  fromRecord(*record->matrixB),
                                  record->flag);
    }
    for (auto const& record : tree.devicePositions) {
        store->devicePositions[static_cast<Device>(record.device())] = fromRecord(record.pose());
    }
    return store;
}

} // namespace bench
