#include <roamscan/sensors/SensorFile_generated.h>
#include <roamscan/sensors/detail/SensorBufferSize.h>
#include <roamscan/streams/detail/FlatBufferSize.h>

namespace oV::Roamscan::detail
{

namespace
{

using Offset = flatbuffers::uoffset_t;

void addTime(FlatBufferSize& size, mapping::TimeStamp time)
{
    if (time.get() != 0.0) {
        size.addField<double>();
    }
}

void addSample(FlatBufferSize& size, mapping::RangefinderData const& record)
{
    std::size_t const points = record.getRanges().get().size();
    if (points > 0) {
        size.addVector<SensorSchema::RangePoint>(points);
    }
    addTime(size, record.getTimeStamp());
    size.addField<SensorSchema::Vec3f>(); // origin
    if (points > 0) {
        size.addField<Offset>();
    }
    size.endTable();
}

void addSample(FlatBufferSize& size, mapping::ImuData const& record)
{
    addTime(size, record.getTimeStamp());
    if (record.hasMagneticField()) {
        size.addField<SensorSchema::Vec3f>();
    }
    size.addField<SensorSchema::Vec3f>(); // angularVelocity
    size.addField<SensorSchema::Vec3f>(); // linearAcceleration
    size.endTable();
}

void addName(FlatBufferSize& size, std::string const& name)
{
    if (!name.empty()) {
        size.addString(name.size());
    }
}

// The field of something that is left out where it is empty.
void addOffset(FlatBufferSize& size, bool empty)
{
    if (!empty) {
        size.addField<Offset>();
    }
}

void addOffsets(FlatBufferSize& size, std::size_t count)
{
    if (count > 0) {
        size.addVector<Offset>(count);
    }
}

template <typename T>
void addSensors(FlatBufferSize& size, SensorData::Samples<T> const& sensors)
{
    for (auto const& [name, samples] : sensors) {
        addName(size, name);
        for (auto const& [key, record] : samples) {
            addSample(size, *record);
        }
        addOffsets(size, samples.size());
        addOffset(size, samples.empty());
        addOffset(size, name.empty());
        size.endTable();
    }
    addOffsets(size, sensors.size());
}

} // namespace

std::uint64_t bufferSizeBound(SensorData const& store)
{
    FlatBufferSize size;
    addSensors(size, store.rangefinderData);
    addSensors(size, store.imuData);
    for (auto const& [name, pose] : store.sensorPoses) {
        addName(size, name);
        size.addField<SensorSchema::SensorPoseRecord>();
        addOffset(size, name.empty());
        size.endTable();
    }
    addOffsets(size, store.sensorPoses.size());
    addOffset(size, store.sensorPoses.empty());
    addOffset(size, store.imuData.empty());
    addOffset(size, store.rangefinderData.empty());
    if (store.posesApplied) {
        size.addField<std::uint8_t>();
    }
    size.endTable();
    return size.bound();
}

} // namespace oV::Roamscan::detail
