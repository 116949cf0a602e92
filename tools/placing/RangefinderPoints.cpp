#include "tools/placing/RangefinderPoints.h"

#include <cstddef>

namespace oV::Roamscan::tool
{

std::vector<CloudPoint> scanPointsOf(SampleMap<mapping::RangefinderData> const& samples)
{
    std::size_t count = 0;
    for (auto const& [tick, sample] : samples) {
        count += sample->getRanges().get().size();
    }
    std::vector<CloudPoint> scan;
    scan.reserve(count);
    for (auto const& [tick, sample] : samples) {
        for (mapping::TimedRangefinderPoint const& measured : sample->getRanges().get()) {
            auto const& [x, y, z] = measured.position;
            scan.push_back({{{x, y, z}}, sample->getTimeStamp().get() + static_cast<double>(measured.time)});
        }
    }
    return scan;
}

} // namespace oV::Roamscan::tool
