#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>

#include <memory>

namespace oV::Roamscan
{

namespace detail
{
class PoseSequence;
}

/// Collects poses with times and turns them into a trajectory that interpolates between them. It also reads
/// as a script of a motion: set an initial pose, add poses after durations, wait.
///
/// The order of writing is free; a time that is written again keeps the later pose. Every write makes its
/// time the current time, which relative writes count from; it starts at 0 and goes back when a write does.
/// Durations are not examined. A pose's flag is kept as it is. A pose at a NaN time belongs nowhere and is
/// not kept, though NaN becomes the current time.
///
/// A value: copies are deep, and a moved-from builder is empty and keeps its current time. Many threads may
/// build from one builder; writing needs the caller's own exclusion.
class ROAMSCAN_EXPORT InterpolatedTrajectoryPathBuilder
{
public:
    /// No poses, current time 0.
    InterpolatedTrajectoryPathBuilder();
    InterpolatedTrajectoryPathBuilder(InterpolatedTrajectoryPathBuilder const& other);
    InterpolatedTrajectoryPathBuilder(InterpolatedTrajectoryPathBuilder&& other) noexcept;
    ~InterpolatedTrajectoryPathBuilder();
    InterpolatedTrajectoryPathBuilder& operator=(InterpolatedTrajectoryPathBuilder const& other);
    InterpolatedTrajectoryPathBuilder& operator=(InterpolatedTrajectoryPathBuilder&& other) noexcept;

    /// The same as addPose() at a time: it neither clears the table nor has to come first.
    InterpolatedTrajectoryPathBuilder& setInitialPose(TimeStamp time, TrafoT<double> pose);

    /// Writes a pose at a time.
    InterpolatedTrajectoryPathBuilder& addPose(TimeStamp time, TrafoT<double> pose);

    /// Writes a pose at the current time plus a duration.
    InterpolatedTrajectoryPathBuilder& addPose(Duration const& after, TrafoT<double> pose);

    /// Holds still: writes the pose at exactly the current time again, a duration later.
    /// @throws std::out_of_range if there is no pose at the current time; the builder is as it was then
    InterpolatedTrajectoryPathBuilder& waitFor(Duration const& duration);

    /// The trajectory from the first to the last time, without accelerations. Later writes do not reach it.
    /// Without poses it spans 0 to 0, and sampling it throws `std::out_of_range`.
    [[nodiscard]] virtual Trajectory build() const;

private:
    std::unique_ptr<detail::PoseSequence> poses_; // null: none
    TimeStamp currentTime_;
};

} // namespace oV::Roamscan
