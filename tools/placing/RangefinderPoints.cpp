#include "tools/placing/RangefinderPoints.h"

#include <cstddef>

namespace oV::Roamscan::tool
{

ScanPoints scanPointsOf(SampleMap<mapping::RangefinderData> const& samples)
{
    std::size_t count = 0;
    for (auto const& [tick, sample] : samples) {
        count += sample->getRanges().get().size();
    }
    ScanPoints scan;
    scan.points.reserve(count);
    scan.times.reserve(count);
    for (auto const& [tick, sample] : samples) {
        for (mapping::TimedRangefinderPoint const& measured : sample->getRanges().get()) {
            IRoamscanData::ScanPoint point;
            point.position = {measured.position.x, measured.position.y, measured.position.z};
            scan.points.push_back(point);
            scan.times.push_back(sample->getTimeStamp().get() + static_cast<double>(measured.time));
        }
    }
    return scan;
}

} // namespace oV::Roamscan::tool
