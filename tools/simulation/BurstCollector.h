#pragma once

#include "tools/points/CloudPoint.h"

#include <roamscan/sensors/SensorData.h>

#include <vector>

namespace oV::Roamscan::tool
{

/// Gathers the points of a scan into the samples of a rangefinder. A sample's time stamp is the time of its
/// first point; the others count their times from there.
class BurstCollector
{
public:
    /// A sample takes the points of `duration` seconds at most.
    explicit BurstCollector(double duration) : duration_(duration) {}

    /// Adds a point, in order of time. A point without a time is left out.
    void add(CloudPoint const& point);

    /// All samples, which are the receiver's afterwards.
    [[nodiscard]] SampleMap<mapping::RangefinderData> take();

private:
    void finishBurst();

    double duration_;
    double start_ = 0.0;
    std::vector<mapping::TimedRangefinderPoint> burst_; // since start_
    SampleMap<mapping::RangefinderData> samples_;
};

} // namespace oV::Roamscan::tool
