#include "tools/simulation/BurstCollector.h"

#include <roamscan/time/TimeConversion.h>

#include <cmath>
#include <memory>
#include <utility>

namespace oV::Roamscan::tool
{

void BurstCollector::add(CloudPoint const& point)
{
    if (std::isnan(point.time)) {
        return;
    }
    if (!burst_.empty() && point.time - start_ >= duration_) {
        finishBurst();
    }
    if (burst_.empty()) {
        start_ = point.time;
    }
    auto const& [x, y, z] = point.position;
    burst_.push_back({{x, y, z}, static_cast<float>(point.time - start_), {}});
}

SampleMap<mapping::RangefinderData> BurstCollector::take()
{
    finishBurst();
    return std::exchange(samples_, {});
}

void BurstCollector::finishBurst()
{
    if (burst_.empty()) {
        return;
    }
    // The points are measured from the origin of the sensor's frame.
    mapping::Vector3<double> const origin;
    samples_.insert_or_assign(samples_.end(),
                              TimeConversion::convertToIntegerTime(start_),
                              std::make_shared<mapping::RangefinderData const>(
                                  mapping::TimeStamp(start_), origin, mapping::TimedPointCloud(burst_)));
    burst_.clear(); // keeps its capacity
}

} // namespace oV::Roamscan::tool
