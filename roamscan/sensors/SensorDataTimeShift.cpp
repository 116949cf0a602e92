/// @file
/// Mapping the times of a store.

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <utility>

namespace oV::Roamscan
{

namespace
{

using TickFunction = std::function<int64(int64)>;

mapping::TimeStamp movedTime(mapping::TimeStamp const& time, TickFunction const& f)
{
    return mapping::TimeStamp(
        TimeConversion::convertToSeconds(f(TimeConversion::convertToIntegerTime(time.get()))));
}

mapping::ImuData movedRecord(mapping::ImuData const& record, mapping::TimeStamp time)
{
    return record.hasMagneticField()
               ? mapping::ImuData(time,
                                  record.getLinearAcceleration(),
                                  record.getAngularVelocity(),
                                  record.getMagneticField())
               : mapping::ImuData(time, record.getLinearAcceleration(), record.getAngularVelocity());
}

mapping::RangefinderData movedRecord(mapping::RangefinderData const& record, mapping::TimeStamp time)
{
    return {time, record.getOrigin(), record.getRanges()};
}

mapping::AbsolutePose2DData movedRecord(mapping::AbsolutePose2DData const& record, mapping::TimeStamp time)
{
    return {time, record.getPose(), record.getTranslationUncertainty(), record.getRotationUncertainty()};
}

mapping::ScanningStatusData movedRecord(mapping::ScanningStatusData const& record, mapping::TimeStamp time)
{
    return {time, record.getStationary(), record.getStartNewSubmap()};
}

// If `f` throws, the sensors are unchanged.
template <typename T>
void moveSensors(SensorData::Samples<T>& sensors, TickFunction const& f)
{
    SensorData::Samples<T> moved;
    for (auto const& [name, samples] : sensors) {
        SampleMap<T>* target = nullptr;
        for (auto const& [key, record] : samples) {
            auto movedSample =
                std::make_shared<T const>(movedRecord(*record, movedTime(record->getTimeStamp(), f)));
            int64 const movedKey = f(key);
            if (target == nullptr) {
                target = &moved[name];
            }
            // In the order of the former keys: of several samples mapped to one tick, the last one is kept.
            target->insert_or_assign(target->end(), movedKey, std::move(movedSample));
        }
    }
    sensors = std::move(moved);
}

} // namespace

void SensorData::modifyTime(std::function<int64(int64)> const& f)
{
    moveSensors(imuData, f);
    moveSensors(rangefinderData, f);
    moveSensors(secondRangefinderData, f);
    moveSensors(absolutePoseData, f);
    moveSensors(scanningStatusData, f);
}

} // namespace oV::Roamscan
