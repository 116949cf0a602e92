#include "tools/commands/SensorSummary.h"

#include "tools/io/SensorFile.h"

#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/TimeConversion.h>

#include <algorithm>

namespace oV::Roamscan::tool
{

namespace
{

/// Exact also where years of seconds leave no digits for it.
double secondsBetween(int64 earlier, int64 later)
{
    auto const ticks = static_cast<std::uint64_t>(later) - static_cast<std::uint64_t>(earlier);
    return static_cast<double>(ticks) / TimeConversion::timeResolution;
}

template <typename T>
SampleTimes timesOf(SampleMap<T> const& samples)
{
    SampleTimes times;
    times.samples = samples.size();
    if (samples.empty()) {
        return times;
    }
    int64 const first = samples.begin()->first;
    int64 const last = samples.rbegin()->first;
    times.from = TimeConversion::convertToSeconds(first);
    times.to = TimeConversion::convertToSeconds(last);
    times.duration = secondsBetween(first, last);
    if (samples.size() > 1) {
        times.rate = static_cast<double>(samples.size() - 1) / times.duration;
    }
    int64 previous = first;
    for (auto const& [tick, sample] : samples) {
        times.largestGap = std::max(times.largestGap, secondsBetween(previous, tick));
        previous = tick;
    }
    return times;
}

TrafoT<double> poseOf(mapping::Rigid3<float> const& pose)
{
    return {toEigen(pose.translation).cast<double>(), toEigen(pose.rotation).cast<double>(), true};
}

} // namespace

SensorSummary summarise(SensorData const& data)
{
    SensorSummary summary;
    for (auto const& [name, samples] : data.imuData) {
        auto const withField = std::ranges::count_if(
            samples, [](auto const& entry) { return entry.second->hasMagneticField(); });
        summary.inertialUnits.push_back({name, timesOf(samples), static_cast<std::size_t>(withField)});
    }
    for (auto const& [name, samples] : data.rangefinderData) {
        std::uint64_t points = 0;
        for (auto const& [tick, sample] : samples) {
            points += sample->getRanges().get().size();
        }
        summary.rangefinders.push_back({name, timesOf(samples), points});
    }
    std::ranges::sort(summary.inertialUnits, {}, &SensorSummary::InertialUnit::name);
    std::ranges::sort(summary.rangefinders, {}, &SensorSummary::Rangefinder::name);
    for (auto const& [name, pose] : data.sensorPoses) {
        summary.poses.emplace(name, poseOf(pose));
    }
    summary.posesApplied = data.posesApplied;
    summary.tables = tableCount(data);
    return summary;
}

} // namespace oV::Roamscan::tool
