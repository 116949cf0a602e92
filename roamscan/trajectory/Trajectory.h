#pragma once

#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/SampledTrajectoryRange.h>

#include <functional>

namespace oV::Roamscan
{

/// The pose of a device as a function of time over a closed interval, with an optional acceleration as a
/// second one.
///
/// A trajectory stores no samples of its own: it owns an interval and two functions, and any source can stand
/// behind it. The usual one is the table of poses that InterpolatedTrajectoryPathBuilder makes; its poses are
/// interpolated, it answers from its first key to just under 5 us past its last one, and outside throws
/// `std::out_of_range`.
///
/// Copies are deep and share nothing: copying a trajectory over a table copies the table. A moved-from
/// trajectory may only be assigned to or destroyed. All queries may run on any number of threads at once, as
/// long as the functions allow it; those of this library do.
class ROAMSCAN_EXPORT Trajectory
{
public:
    /// The pose at a time in seconds. It may throw, and is callable from any thread that samples the
    /// trajectory.
    using PoseFunction = std::function<TrafoT<double>(double)>;
    /// The acceleration in the global frame at a time in seconds.
    using AccelerationFunction = std::function<Bv_1_1::Vec3d<double>(double)>;

    /// The interval from 0 to 0, without functions: it contains the instant 0 and has no pose there.
    Trajectory();

    /// A trajectory without accelerations. The interval is not checked and `pose` is not called.
    Trajectory(TimeStamp start, TimeStamp stop, PoseFunction pose);

    /// A trajectory with accelerations in the global frame. It counts as having them even if the function is
    /// empty.
    Trajectory(TimeStamp start, TimeStamp stop, PoseFunction pose, AccelerationFunction acceleration);

    Trajectory(Trajectory const& other);
    Trajectory(Trajectory&& other) noexcept;
    ~Trajectory();
    Trajectory& operator=(Trajectory const& other);
    Trajectory& operator=(Trajectory&& other) noexcept;

    /// The first instant of the interval.
    [[nodiscard]] TimeStamp getStartTime() const;
    /// The last instant of the interval.
    [[nodiscard]] TimeStamp getStopTime() const;
    /// Stop minus start.
    [[nodiscard]] Duration getDuration() const;

    /// Whether the time, in seconds or ticks of 10 ns, is at least the start and not greater than the stop.
    /// Both ends belong to the interval, without any tolerance; a NaN time does not.
    [[nodiscard]] bool contains(double seconds) const;
    /// @overload
    [[nodiscard]] bool contains(TimeStamp time) const;
    /// @overload
    [[nodiscard]] bool contains(int64 time) const;

    /// Whether start and stop do not differ, also because one is NaN. This speaks of the interval, not of the
    /// source: a trajectory over a single pose is empty and answers at that instant.
    [[nodiscard]] bool empty() const;

    /// Whether an acceleration function was supplied.
    [[nodiscard]] bool hasGlobalAccelerations() const;

    /// The pose at a time in seconds or ticks of 10 ns. The pose function alone decides about the range: it
    /// is called for any time, also outside the interval, and what it throws passes through.
    /// @throws std::bad_function_call without a pose function
    /// @throws std::out_of_range outside a table of poses
    [[nodiscard]] TrafoT<double> sample(double seconds) const;
    /// @overload
    [[nodiscard]] TrafoT<double> sample(TimeStamp time) const;
    /// @overload
    [[nodiscard]] TrafoT<double> sample(int64 time) const;

    /// The pose at a time that the interval contains, else `fallback`.
    [[nodiscard]] TrafoT<double> sample_or(TimeStamp time, TrafoT<double> fallback) const;

    /// The acceleration in the global frame. The interval is not tested.
    /// @throws oV::InternalErrorException if no acceleration function was supplied
    /// @throws std::bad_function_call if an empty one was
    [[nodiscard]] Bv_1_1::Vec3d<double> sampleGlobalAcceleration(TimeStamp time) const;

    /// The acceleration at a time that the interval contains, else, or without accelerations, `fallback`.
    [[nodiscard]] Bv_1_1::Vec3d<double> sampleGlobalAcceleration_or(TimeStamp time,
                                                                    Bv_1_1::Vec3d<double> fallback) const;

    /// A walk from start to stop at a fixed step. It borrows this trajectory.
    [[nodiscard]] SampledTrajectoryRange sampled(Duration step) const;

    /// A walk between two instants, which need not lie in the trajectory. It borrows this trajectory.
    [[nodiscard]] SampledTrajectoryRange sampled_over(TimeStamp from, TimeStamp to, Duration step) const;

private:
    friend class PoseSource;

    TimeStamp start_;
    TimeStamp stop_;
    PoseFunction pose_;
    AccelerationFunction acceleration_;
    bool hasGlobalAccelerations_ = false;
};

} // namespace oV::Roamscan
