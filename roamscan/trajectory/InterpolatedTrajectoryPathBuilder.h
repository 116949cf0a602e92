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

/// Collects poses with times and builds a trajectory that interpolates between them: linearly in translation,
/// by slerp in rotation.
///
/// Poses are added at absolute times, or relative to the current time, which is the time of the last call
/// that added a pose (0 at first). Times may come in any order. Of two poses at the same time, the one added
/// later replaces the other.
///
/// Copies are deep. A moved-from builder has no poses and keeps its current time.
///
/// Thread safety: build() may run concurrently. Adding poses needs external synchronisation.
///
/// @note Durations may be zero or negative; the current time then does not change or decreases. A pose that
/// is not `valid()` is added like any other. A pose at time NaN is dropped, but NaN becomes the current time.
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

    /// The same as addPose() at an absolute time.
    /// @note It does not remove earlier poses, and need not be called first.
    InterpolatedTrajectoryPathBuilder& setInitialPose(TimeStamp time, TrafoT<double> pose);

    /// Adds a pose at an absolute time.
    InterpolatedTrajectoryPathBuilder& addPose(TimeStamp time, TrafoT<double> pose);

    /// Adds a pose at the current time plus a duration.
    InterpolatedTrajectoryPathBuilder& addPose(Duration const& after, TrafoT<double> pose);

    /// Stands still: adds the pose of the current time again, a duration later.
    /// @throws std::out_of_range if there is no pose at exactly the current time; the builder is then
    ///         unchanged
    InterpolatedTrajectoryPathBuilder& waitFor(Duration const& duration);

    /// @return the trajectory from the first to the last time, without accelerations. It owns a copy of the
    ///         poses. Without poses its interval is 0 to 0 and sampling it throws `std::out_of_range`.
    [[nodiscard]] virtual Trajectory build() const;

private:
    std::unique_ptr<detail::PoseSequence> poses_; // null: none
    TimeStamp currentTime_;
};

} // namespace oV::Roamscan
