#include <roamscan/frame/failures/detail/ThrowInternalError.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

namespace oV::Roamscan
{

namespace
{

constexpr char const* buildFunction = "oV::Roamscan::TrajectoryData::buildTrajectoryFromTrajectoryNodes";
constexpr wchar_t const* noFromPosition = L"Cannot build trajectory without from device position.";
constexpr wchar_t const* noToPosition = L"Cannot build trajectory without to device position.";

} // namespace

TrajectoryData::TrajectoryData() = default;
TrajectoryData::TrajectoryData(TrajectoryData const& other) = default;
TrajectoryData::~TrajectoryData() = default;

TrajectoryData& TrajectoryData::operator=(TrajectoryData const& other)
{
    // Copies both before assigning either: if copying throws, this store is unchanged.
    TrajectoryData copy(other);
    nodes.swap(copy.nodes);
    devicePositions.swap(copy.devicePositions);
    return *this;
}

Trajectory TrajectoryData::buildTrajectoryFromTrajectoryNodes(Device from, Device to) const
{
    auto const fromPosition = devicePositions.find(from);
    if (fromPosition == devicePositions.end()) {
        detail::throwInternalError(noFromPosition, buildFunction, "TrajectoryData", __LINE__);
    }
    auto const toPosition = devicePositions.find(to);
    if (toPosition == devicePositions.end()) {
        detail::throwInternalError(noToPosition, buildFunction, "TrajectoryData", __LINE__);
    }
    return Roamscan::buildTrajectoryFromTrajectoryNodes(
        nodes, fromPosition->second, toPosition->second.inverse());
}

Trajectory TrajectoryData::buildTrajectoryFromTrajectoryNodes(Device device) const
{
    if (!devicePositions.contains(device)) {
        detail::throwInternalError(noToPosition, buildFunction, "TrajectoryData", __LINE__);
    }
    return buildTrajectoryFromTrajectoryNodes(device, device);
}

} // namespace oV::Roamscan
