#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/trajectory/SampledTrajectoryIterator.h>

#include <cstdint>

namespace oV::Roamscan
{

class Trajectory;

/// The poses of a trajectory at a fixed step, for a range-based loop over nodes. Poses are evaluated during
/// the iteration; nothing is stored.
///
/// Refers to the trajectory, which must outlive the range and its iterators.
class ROAMSCAN_EXPORT SampledTrajectoryRange
{
public:
    /// The positions `start + i * step` for i from 0 to `llround((stop - start) / step)`. The last one lies
    /// within half a step of `stop`, before or after it.
    /// @warning The step is not checked. A step of zero or below may give a loop of up to 2^64 positions.
    SampledTrajectoryRange(Trajectory const* trajectory, TimeStamp start, TimeStamp stop, Duration step);

    [[nodiscard]] SampledTrajectoryIterator begin() const;
    /// Evaluates the pose function if the trajectory contains the time after the last position.
    [[nodiscard]] SampledTrajectoryIterator end() const;

private:
    Trajectory const* trajectory_;
    TimeStamp start_;
    Duration step_;
    std::uint64_t count_;
};

} // namespace oV::Roamscan
