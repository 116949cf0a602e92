#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/trajectory/SampledTrajectoryIterator.h>

#include <cstdint>

namespace oV::Roamscan
{

class Trajectory;

/// A walk along a trajectory at a fixed step, for a plain range loop over its nodes. It holds no samples;
/// each position evaluates the pose function once, and so does end() where its time lies in the trajectory.
///
/// Borrows the trajectory, which must outlive the range and its iterators.
class ROAMSCAN_EXPORT SampledTrajectoryRange
{
public:
    /// From `start` on, `llround((stop - start) / step) + 1` positions; so the last one may stop short of
    /// `stop` or pass it by up to half a step. The step is not checked: with zero or a negative one the count
    /// is what that formula gives, which may be a loop without a practical end.
    SampledTrajectoryRange(Trajectory const* trajectory, TimeStamp start, TimeStamp stop, Duration step);

    [[nodiscard]] SampledTrajectoryIterator begin() const;
    [[nodiscard]] SampledTrajectoryIterator end() const;

private:
    Trajectory const* trajectory_;
    TimeStamp start_;
    Duration step_;
    std::uint64_t count_;
};

} // namespace oV::Roamscan
