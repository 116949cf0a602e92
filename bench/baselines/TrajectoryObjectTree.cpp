#include "bench/baselines/ObjectTrees.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace bench
{

namespace
{

namespace schema = oV::Roamscan::TrajectorySchema;
using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;

schema::PoseRecord toRecord(TrafoT<double> const& pose)
{
    auto const [tx, ty, tz, qw, qx, qy, qz] = pose.serialize();
    return {tx, ty, tz, qw, qx, qy, qz};
}

schema::Matrix3Record toRecord(Eigen::Matrix3d const& matrix)
{
    return schema::Matrix3Record(flatbuffers::span<double const, 9>(matrix.data(), 9));
}

TrafoT<double> fromRecord(schema::PoseRecord const& record)
{
    return {Eigen::Vector3d(record.tx(), record.ty(), record.tz()),
            Eigen::Quaterniond(record.qw(), record.qx(), record.qy(), record.qz()),
            true};
}

Eigen::Matrix3d fromRecord(schema::Matrix3Record const& record)
{
    Eigen::Matrix3d matrix;
    std::copy(record.values()->begin(), record.values()->end(), matrix.data());
    return matrix;
}

} // namespace

schema::TrajectoryFileT toTree(TrajectoryData const& store)
{
    schema::TrajectoryFileT tree;
    tree.nodes.reserve(store.nodes.size());
    for (TrajectoryNode const& node : store.nodes) {
        auto record = std::make_unique<schema::TrajectoryNodeRecordT>();
        record->time = node.time;
        record->pose = std::make_unique<schema::PoseRecord>(toRecord(node.pose));
        record->type = static_cast<std::uint32_t>(node.type);
        record->matrixA = std::make_unique<schema::Matrix3Record>(toRecord(node.matrixA));
        record->matrixB = std::make_unique<schema::Matrix3Record>(toRecord(node.matrixB));
        record->flag = node.flag;
        tree.nodes.push_back(std::move(record));
    }
    for (auto const& [device, pose] : store.devicePositions) {
        tree.devicePositions.emplace_back(static_cast<std::int32_t>(device), toRecord(pose));
    }
    return tree;
}

std::shared_ptr<TrajectoryData> fromTree(schema::TrajectoryFileT const& tree)
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
