#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/detail/PoseSequence.h>
#include <roamscan/trajectory/detail/TrajectoryOverTable.h>

#include <stdexcept>

namespace oV::Roamscan
{

InterpolatedTrajectoryPathBuilder::InterpolatedTrajectoryPathBuilder() = default;

InterpolatedTrajectoryPathBuilder::InterpolatedTrajectoryPathBuilder(
    InterpolatedTrajectoryPathBuilder const& other)
    : poses_(other.poses_ ? std::make_unique<detail::PoseSequence>(*other.poses_) : nullptr),
      currentTime_(other.currentTime_)
{}

InterpolatedTrajectoryPathBuilder::InterpolatedTrajectoryPathBuilder(
    InterpolatedTrajectoryPathBuilder&& other) noexcept = default;

InterpolatedTrajectoryPathBuilder::~InterpolatedTrajectoryPathBuilder() = default;

InterpolatedTrajectoryPathBuilder&
InterpolatedTrajectoryPathBuilder::operator=(InterpolatedTrajectoryPathBuilder const& other)
{
    return *this = InterpolatedTrajectoryPathBuilder(other);
}

InterpolatedTrajectoryPathBuilder&
InterpolatedTrajectoryPathBuilder::operator=(InterpolatedTrajectoryPathBuilder&& other) noexcept = default;

InterpolatedTrajectoryPathBuilder& InterpolatedTrajectoryPathBuilder::setInitialPose(TimeStamp time,
                                                                                     TrafoT<double> pose)
{
    return addPose(time, pose);
}

InterpolatedTrajectoryPathBuilder& InterpolatedTrajectoryPathBuilder::addPose(TimeStamp time,
                                                                              TrafoT<double> pose)
{
    if (!poses_) {
        poses_ = std::make_unique<detail::PoseSequence>();
    }
    poses_->write(time.get(), pose);
    currentTime_ = time;
    return *this;
}

InterpolatedTrajectoryPathBuilder& InterpolatedTrajectoryPathBuilder::addPose(Duration const& after,
                                                                              TrafoT<double> pose)
{
    return addPose(currentTime_ + after, pose);
}

InterpolatedTrajectoryPathBuilder& InterpolatedTrajectoryPathBuilder::waitFor(Duration const& duration)
{
    // Every write sets the current time, so the pose at the current time is the last one written.
    TrafoT<double> const* const held = poses_ ? poses_->lastWritten() : nullptr;
    if (held == nullptr) {
        throw std::out_of_range("invalid map<K, T> key");
    }
    return addPose(duration, *held);
}

Trajectory InterpolatedTrajectoryPathBuilder::build() const
{
    return detail::trajectoryOverTable(poses_ ? poses_->toTable() : detail::PoseTable({}, {}));
}

} // namespace oV::Roamscan
