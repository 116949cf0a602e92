#include <roamscan/frame/failures/detail/ThrowInternalError.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/trajectory/Trajectory.h>

#include <utility>

namespace oV::Roamscan
{

Trajectory::Trajectory() = default;

Trajectory::Trajectory(TimeStamp start, TimeStamp stop, PoseFunction pose)
    : start_(start),
      stop_(stop),
      pose_(std::move(pose)),
      acceleration_([](double) { return Bv_1_1::Vec3d<double>{}; })
{}

Trajectory::Trajectory(TimeStamp start, TimeStamp stop, PoseFunction pose, AccelerationFunction acceleration)
    : start_(start),
      stop_(stop),
      pose_(std::move(pose)),
      acceleration_(std::move(acceleration)),
      hasGlobalAccelerations_(true)
{}

Trajectory::Trajectory(Trajectory const& other) = default;
Trajectory::Trajectory(Trajectory&& other) noexcept = default;
Trajectory::~Trajectory() = default;
Trajectory& Trajectory::operator=(Trajectory&& other) noexcept = default;

Trajectory& Trajectory::operator=(Trajectory const& other)
{
    // Copy and swap: if copying throws, this trajectory is unchanged.
    return *this = Trajectory(other);
}

TimeStamp Trajectory::getStartTime() const
{
    return start_;
}

TimeStamp Trajectory::getStopTime() const
{
    return stop_;
}

Duration Trajectory::getDuration() const
{
    return stop_ - start_;
}

bool Trajectory::contains(double seconds) const
{
    return seconds >= start_.get() && !(seconds > stop_.get());
}

bool Trajectory::contains(TimeStamp time) const
{
    return contains(time.get());
}

bool Trajectory::contains(int64 time) const
{
    return contains(TimeConversion::convertToSeconds(time));
}

bool Trajectory::empty() const
{
    return !(stop_ < start_ || stop_ > start_);
}

bool Trajectory::hasGlobalAccelerations() const
{
    return hasGlobalAccelerations_;
}

TrafoT<double> Trajectory::sample(double seconds) const
{
    return pose_(seconds);
}

TrafoT<double> Trajectory::sample(TimeStamp time) const
{
    return pose_(time.get());
}

TrafoT<double> Trajectory::sample(int64 time) const
{
    return pose_(TimeConversion::convertToSeconds(time));
}

TrafoT<double> Trajectory::sample_or(TimeStamp time, TrafoT<double> fallback) const
{
    return contains(time) ? sample(time) : fallback;
}

Bv_1_1::Vec3d<double> Trajectory::sampleGlobalAcceleration(TimeStamp time) const
{
    if (!hasGlobalAccelerations_) {
        detail::throwInternalError(L"No acceleration info provided.",
                                   "oV::Roamscan::Trajectory::sampleGlobalAcceleration",
                                   "Trajectory",
                                   __LINE__);
    }
    return acceleration_(time.get());
}

Bv_1_1::Vec3d<double> Trajectory::sampleGlobalAcceleration_or(TimeStamp time,
                                                              Bv_1_1::Vec3d<double> fallback) const
{
    return hasGlobalAccelerations_ && contains(time) ? acceleration_(time.get()) : fallback;
}

SampledTrajectoryRange Trajectory::sampled(Duration step) const
{
    return sampled_over(start_, stop_, step);
}

SampledTrajectoryRange Trajectory::sampled_over(TimeStamp from, TimeStamp to, Duration step) const
{
    return SampledTrajectoryRange(this, from, to, step);
}

} // namespace oV::Roamscan
