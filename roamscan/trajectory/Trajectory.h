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

/// The pose of a device as a function of time over a closed interval, optionally with its acceleration. A
/// pose transforms from the device's frame to the trajectory's target frame, usually the global frame.
///
/// A trajectory owns an interval, a pose function and an acceleration function. The usual pose function is
/// the table that InterpolatedTrajectoryPathBuilder makes: it interpolates between its poses, from the first
/// time to just under 5 us past the last one, and throws `std::out_of_range` outside.
///
/// Copies are deep: copying a trajectory with a table copies the table. A moved-from trajectory may only be
/// assigned to or destroyed.
///
/// Thread safety: all queries may run concurrently if the functions allow it. The functions of this library
/// do.
class ROAMSCAN_EXPORT Trajectory
{
public:
    /// The pose at a time in seconds. It may throw. It is called on the thread that samples the trajectory.
    using PoseFunction = std::function<TrafoT<double>(double)>;
    /// The acceleration in the global frame at a time in seconds.
    using AccelerationFunction = std::function<Bv_1_1::Vec3d<double>(double)>;

    /// The interval from 0 to 0 without functions. It contains the instant 0, but sampling it throws
    /// `std::bad_function_call`.
    Trajectory();

    /// A trajectory without accelerations.
    /// @note `start` may be after `stop`: the interval is not checked. `pose` is not called.
    Trajectory(TimeStamp start, TimeStamp stop, PoseFunction pose);

    /// A trajectory with accelerations in the global frame.
    /// @note hasGlobalAccelerations() is then true, even if `acceleration` is an empty function.
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

    /// Whether start <= time <= stop, without tolerance. False for NaN.
    /// @param seconds in seconds; the overload for `int64` takes ticks of 10 ns
    [[nodiscard]] bool contains(double seconds) const;
    /// @overload
    [[nodiscard]] bool contains(TimeStamp time) const;
    /// @overload
    [[nodiscard]] bool contains(int64 time) const;

    /// Whether the interval has no length: start equals stop, or one of them is NaN.
    /// @note A trajectory with a single pose is empty in this sense, and can be sampled at that instant.
    [[nodiscard]] bool empty() const;

    /// Whether an acceleration function was supplied.
    [[nodiscard]] bool hasGlobalAccelerations() const;

    /// The pose at a time. Calls the pose function, whose exceptions pass through.
    /// @param seconds in seconds; the overload for `int64` takes ticks of 10 ns
    /// @throws std::bad_function_call if there is no pose function
    /// @throws std::out_of_range if the pose function is a table and the time is outside it
    /// @note The interval is not tested: the pose function decides for which times it has a pose.
    /// @warning A pose that the table interpolates is always valid(), even if its neighbours are not. Only
    ///     the last pose is returned as it was added. See TrafoT::interpolate().
    [[nodiscard]] TrafoT<double> sample(double seconds) const;
    /// @overload
    [[nodiscard]] TrafoT<double> sample(TimeStamp time) const;
    /// @overload
    [[nodiscard]] TrafoT<double> sample(int64 time) const;

    /// @return sample(time) if the interval contains the time, otherwise `fallback`
    [[nodiscard]] TrafoT<double> sample_or(TimeStamp time, TrafoT<double> fallback) const;

    /// The acceleration in the global frame. The interval is not tested.
    /// @throws oV::InternalErrorException if no acceleration function was supplied
    /// @throws std::bad_function_call if the supplied function is empty
    [[nodiscard]] Bv_1_1::Vec3d<double> sampleGlobalAcceleration(TimeStamp time) const;

    /// @return sampleGlobalAcceleration(time) if there are accelerations and the interval contains the time,
    ///         otherwise `fallback`
    [[nodiscard]] Bv_1_1::Vec3d<double> sampleGlobalAcceleration_or(TimeStamp time,
                                                                    Bv_1_1::Vec3d<double> fallback) const;

    /// The poses from start to stop at a fixed step, for a range-based loop. The range refers to this
    /// trajectory, which must outlive it.
    [[nodiscard]] SampledTrajectoryRange sampled(Duration step) const;

    /// The same between two instants, which may lie outside the interval.
    /// @warning Positions outside the interval repeat the previous node; see SampledTrajectoryIterator.
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
