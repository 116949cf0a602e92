#include <roamscan/frame/failures/detail/ThrowInternalError.h>
#include <roamscan/sensors/SensorData.h>

namespace oV::Roamscan
{

namespace
{

// The first entry at or after `key`, starting from a position before it: a few steps, which suffice when two
// recordings interleave, then a search.
template <typename T>
typename SampleMap<T>::iterator
positionOf(int64 key, SampleMap<T>& samples, typename SampleMap<T>::iterator position)
{
    constexpr int fewSteps = 8;
    for (int step = 0; step < fewSteps; ++step) {
        if (position == samples.end() || position->first >= key) {
            return position;
        }
        ++position;
    }
    return samples.lower_bound(key);
}

template <typename T>
void mergeSamples(SampleMap<T>& samples, SampleMap<T> const& others)
{
    if (others.empty()) {
        return;
    }
    auto position = samples.lower_bound(others.begin()->first);
    for (auto const& [key, record] : others) {
        position = positionOf<T>(key, samples, position);
        if (position == samples.end() || position->first != key) {
            position = samples.emplace_hint(position, key, record);
        }
    }
}

template <typename T>
void mergeSensors(SensorData::Samples<T>& sensors, SensorData::Samples<T> const& others)
{
    for (auto const& [name, samples] : others) {
        auto const [sensor, isNew] = sensors.try_emplace(name, samples);
        if (!isNew) {
            mergeSamples<T>(sensor->second, samples);
        }
    }
}

} // namespace

SensorData::SensorData() = default;
SensorData::SensorData(SensorData const& other) = default;
SensorData::~SensorData() = default;
SensorData& SensorData::operator=(SensorData const& other) = default;

SensorData& SensorData::operator+=(SensorData const& other)
{
    if (other.posesApplied != posesApplied) {
        detail::throwInternalError(L"Cannot combine sensor data because posesApplied differs.",
                                   "oV::Roamscan::SensorData::operator +=",
                                   "SensorData",
                                   __LINE__);
    }
    if (&other == this) {
        return *this; // nothing to add
    }
    mergeSensors(imuData, other.imuData);
    mergeSensors(absolutePoseData, other.absolutePoseData);
    mergeSensors(rangefinderData, other.rangefinderData);
    mergeSensors(secondRangefinderData, other.secondRangefinderData);
    mergeSensors(scanningStatusData, other.scanningStatusData);
    sensorPoses.insert(other.sensorPoses.begin(), other.sensorPoses.end());
    return *this;
}

} // namespace oV::Roamscan
