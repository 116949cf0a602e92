#pragma once

#include <roamscan/frame/mapping/StrongAlias.h>
#include <roamscan/frame/mapping/TimeStamp.h>
#include <roamscan/frame/mapping/TimedRangefinderPoint.h>
#include <roamscan/frame/mapping/Vector3.h>

#include <utility>
#include <vector>

namespace mapping
{

struct TimedPointCloudTag;

/// The points of one burst.
using TimedPointCloud = StrongAlias<std::vector<TimedRangefinderPoint>, TimedPointCloudTag>;

/// One burst of a range sensor: points that were measured shortly after one another, from one position.
/// Immutable.
///
/// The recording software defines the frame and the unit of the positions. This library does not interpret
/// them.
class RangefinderData
{
public:
    /// @param time the time of the burst
    /// @param origin the position from which the burst was measured
    /// @param ranges the points of the burst
    RangefinderData(TimeStamp time, Vector3<double> origin, TimedPointCloud ranges)
        : time_(time), origin_(origin), ranges_(std::move(ranges))
    {}

    /// The time of the burst.
    [[nodiscard]] TimeStamp const& getTimeStamp() const { return time_; }

    /// The position from which the burst was measured.
    [[nodiscard]] Vector3<double> const& getOrigin() const { return origin_; }
    /// The points of the burst.
    [[nodiscard]] TimedPointCloud const& getRanges() const { return ranges_; }

private:
    TimeStamp time_;
    Vector3<double> origin_;
    TimedPointCloud ranges_;
};

} // namespace mapping
