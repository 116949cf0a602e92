#pragma once

#include "tools/points/CloudPoint.h"

#include <roamscan/sensors/SensorData.h>

#include <vector>

namespace oV::Roamscan::tool
{

/// Groups the points of a scan into samples of a rangefinder. The time stamp of a sample is the time of its
/// first point; the times of the points are relative to it.
class BurstCollector
{
public:
    /// @param duration the longest time of a sample in seconds
    explicit BurstCollector(double duration) : duration_(duration) {}

    /// Adds a point, in order of time. A point without a time is ignored.
    void add(CloudPoint const& point);

    /// Moves all samples out.
    [[nodiscard]] SampleMap<mapping::RangefinderData> take();

private:
    void finishBurst();

    double duration_;
    double start_ = 0.0;
    std::vector<mapping::TimedRangefinderPoint> burst_; // since start_
    SampleMap<mapping::RangefinderData> samples_;
};

} // namespace oV::Roamscan::tool
