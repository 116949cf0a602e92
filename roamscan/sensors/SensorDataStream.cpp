/// @file
/// Reads and writes SensorData, directly between store and buffer.

#include <roamscan/sensors/SensorData.h>
#include <roamscan/sensors/SensorFile_generated.h>
#include <roamscan/sensors/detail/SensorBufferSize.h>
#include <roamscan/streams/detail/FlatBufferRoot.h>
#include <roamscan/streams/detail/LengthPrefixedBuffer.h>
#include <roamscan/streams/detail/UnpackedSize.h>
#include <roamscan/streams/detail/WriteFlatBuffer.h>
#include <roamscan/time/TimeConversion.h>

#include <algorithm>
#include <cstddef>
#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace oV::Roamscan
{

namespace
{

template <typename Table>
using Tables = std::vector<flatbuffers::Offset<Table>>;

template <typename Table>
using TableVector = flatbuffers::Vector<flatbuffers::Offset<Table>>;

// Writing

SensorSchema::Vec3f toRecord(mapping::Vector3<double> const& vector)
{
    return {static_cast<float>(vector.x), static_cast<float>(vector.y), static_cast<float>(vector.z)};
}

SensorSchema::SensorPoseRecord toRecord(mapping::Rigid3<float> const& pose)
{
    auto const& [translation, rotation] = pose;
    return {translation.x, translation.y, translation.z, rotation.w, rotation.x, rotation.y, rotation.z};
}

// An empty string or vector is left out.
flatbuffers::Offset<flatbuffers::String> packName(flatbuffers::FlatBufferBuilder& builder,
                                                  std::string const& name)
{
    return name.empty() ? 0 : builder.CreateString(name);
}

template <typename Table>
flatbuffers::Offset<TableVector<Table>> packVector(flatbuffers::FlatBufferBuilder& builder,
                                                   Tables<Table> const& tables)
{
    return tables.empty() ? 0 : builder.CreateVector(tables);
}

flatbuffers::Offset<flatbuffers::Vector<SensorSchema::RangePoint const*>>
packPoints(flatbuffers::FlatBufferBuilder& builder, std::vector<mapping::TimedRangefinderPoint> const& points)
{
    if (points.empty()) {
        return 0;
    }
    // Copies into an array first: the builder's CreateUninitializedVectorOfStructs() would align the vector
    // more strictly than the schema.
    std::vector<SensorSchema::RangePoint> records;
    records.reserve(points.size());
    for (auto const& point : points) {
        records.emplace_back(point.position.x, point.position.y, point.position.z, point.time);
    }
    return builder.CreateVectorOfStructs(records);
}

flatbuffers::Offset<SensorSchema::RangefinderSample> packSample(flatbuffers::FlatBufferBuilder& builder,
                                                                mapping::RangefinderData const& record)
{
    auto const points = packPoints(builder, record.getRanges());
    auto const origin = toRecord(record.getOrigin());
    return SensorSchema::CreateRangefinderSample(builder, record.getTimeStamp().get(), points, &origin);
}

flatbuffers::Offset<SensorSchema::ImuSample> packSample(flatbuffers::FlatBufferBuilder& builder,
                                                        mapping::ImuData const& record)
{
    auto const acceleration = toRecord(record.getLinearAcceleration());
    auto const velocity = toRecord(record.getAngularVelocity());
    auto const field = toRecord(record.getMagneticField());
    return SensorSchema::CreateImuSample(builder,
                                         record.getTimeStamp().get(),
                                         &acceleration,
                                         &velocity,
                                         record.hasMagneticField() ? &field : nullptr);
}

template <typename Sensor, typename Sample, typename T, typename Create>
flatbuffers::Offset<TableVector<Sensor>> packSensors(flatbuffers::FlatBufferBuilder& builder,
                                                     SensorData::Samples<T> const& sensors,
                                                     Create const& createSensor)
{
    Tables<Sensor> tables;
    tables.reserve(sensors.size());
    Tables<Sample> samples;
    for (auto const& [name, records] : sensors) {
        auto const nameText = packName(builder, name);
        samples.clear();
        samples.reserve(records.size());
        for (auto const& [key, record] : records) {
            samples.push_back(packSample(builder, *record));
        }
        tables.push_back(createSensor(builder, nameText, packVector(builder, samples)));
    }
    return packVector(builder, tables);
}

flatbuffers::Offset<TableVector<SensorSchema::SensorPose>>
packPoses(flatbuffers::FlatBufferBuilder& builder,
          std::unordered_map<std::string, mapping::Rigid3<float>> const& poses)
{
    Tables<SensorSchema::SensorPose> tables;
    tables.reserve(poses.size());
    for (auto const& [name, pose] : poses) {
        auto const nameText = packName(builder, name);
        auto const record = toRecord(pose);
        tables.push_back(SensorSchema::CreateSensorPose(builder, nameText, &record));
    }
    return packVector(builder, tables);
}

// The order of these steps fixes the bytes.
void packStore(flatbuffers::FlatBufferBuilder& builder, SensorData const& store)
{
    auto const rangefinders = packSensors<SensorSchema::RangefinderSensor, SensorSchema::RangefinderSample>(
        builder, store.rangefinderData, SensorSchema::CreateRangefinderSensor);
    auto const imus = packSensors<SensorSchema::ImuSensor, SensorSchema::ImuSample>(
        builder, store.imuData, SensorSchema::CreateImuSensor);
    auto const poses = packPoses(builder, store.sensorPoses);
    builder.Finish(
        SensorSchema::CreateSensorDataRoot(builder, rangefinders, imus, poses, store.posesApplied));
}

// Reading

mapping::Vector3<double> fromRecord(SensorSchema::Vec3f const& record)
{
    return {record.x(), record.y(), record.z()};
}

mapping::Rigid3<float> fromRecord(SensorSchema::SensorPoseRecord const& record)
{
    return {{record.tx(), record.ty(), record.tz()}, {record.qx(), record.qy(), record.qz(), record.qw()}};
}

std::string nameOf(flatbuffers::String const* name)
{
    return name == nullptr ? std::string() : name->str();
}

template <typename Element>
std::uint64_t sizeOf(flatbuffers::Vector<Element> const* vector)
{
    return vector == nullptr ? 0 : vector->size();
}

std::uint64_t sizeInStore(SensorSchema::RangefinderSample const& sample)
{
    return sizeof(mapping::RangefinderData) +
           sizeof(mapping::TimedRangefinderPoint) * sizeOf(sample.points());
}

std::uint64_t sizeInStore(SensorSchema::ImuSample const& /*sample*/)
{
    return sizeof(mapping::ImuData);
}

std::uint64_t sizeInStore(flatbuffers::String const* name)
{
    return sizeof(std::string) + sizeOf(name);
}

// Allocates records in blocks that share one allocation and one reference count. Blocks are small, because
// one record keeps its whole block alive.
template <typename T>
class RecordBlocks
{
public:
    explicit RecordBlocks(std::size_t expected) : blockSize_(std::min(expected, largestBlock)) {}

    template <typename... Arguments>
    std::shared_ptr<T const> make(Arguments&&... arguments)
    {
        if (!block_ || block_->size() == block_->capacity()) {
            block_ = std::make_shared<std::vector<T>>();
            block_->reserve(blockSize_);
        }
        block_->emplace_back(std::forward<Arguments>(arguments)...);
        return std::shared_ptr<T const>(block_, &block_->back());
    }

private:
    static constexpr std::size_t largestBlock = 64;

    std::size_t blockSize_;
    std::shared_ptr<std::vector<T>> block_;
};

// These return null if the sample lacks a required vector.

std::shared_ptr<mapping::ImuData const> unpackSample(RecordBlocks<mapping::ImuData>& records,
                                                     SensorSchema::ImuSample const& sample)
{
    auto const* const acceleration = sample.linearAcceleration();
    auto const* const velocity = sample.angularVelocity();
    if (acceleration == nullptr || velocity == nullptr) {
        return nullptr;
    }
    mapping::TimeStamp const time(sample.time());
    auto const* const field = sample.magneticField();
    return field == nullptr
               ? records.make(time, fromRecord(*acceleration), fromRecord(*velocity))
               : records.make(time, fromRecord(*acceleration), fromRecord(*velocity), fromRecord(*field));
}

std::shared_ptr<mapping::RangefinderData const> unpackSample(RecordBlocks<mapping::RangefinderData>& records,
                                                             SensorSchema::RangefinderSample const& sample)
{
    if (sample.origin() == nullptr) {
        return nullptr;
    }
    std::vector<mapping::TimedRangefinderPoint> points;
    points.reserve(sizeOf(sample.points()));
    for (flatbuffers::uoffset_t i = 0; i < sizeOf(sample.points()); ++i) {
        SensorSchema::RangePoint const& point = *sample.points()->Get(i);
        points.push_back({{point.x(), point.y(), point.z()}, point.time(), {}});
    }
    return records.make(mapping::TimeStamp(sample.time()),
                        fromRecord(*sample.origin()),
                        mapping::TimedPointCloud(std::move(points)));
}

// Returns false if a sample lacks a required vector, or if the contents are too large. A sensor without
// samples gets no entry.
template <typename T, typename Sensor>
bool unpackSensors(SensorData::Samples<T>& sensors,
                   TableVector<Sensor> const* tables,
                   detail::UnpackedSize& size)
{
    for (flatbuffers::uoffset_t i = 0; i < sizeOf(tables); ++i) {
        auto const* const samples = tables->Get(i)->samples();
        if (sizeOf(samples) == 0) {
            continue;
        }
        if (!size.add(sizeInStore(tables->Get(i)->name()))) {
            return false;
        }
        SampleMap<T>& target = sensors[nameOf(tables->Get(i)->name())];
        RecordBlocks<T> records(samples->size());
        for (auto const* const sample : *samples) {
            auto record = size.add(sizeInStore(*sample)) ? unpackSample(records, *sample) : nullptr;
            if (!record) {
                return false;
            }
            // The hint is right for samples in the order of time. A later record of a tick replaces the
            // earlier one.
            target.insert_or_assign(
                target.end(), TimeConversion::convertToIntegerTime(sample->time()), std::move(record));
        }
    }
    return true;
}

// Returns false if a pose table lacks its pose, or if the contents are too large.
bool unpackPoses(std::unordered_map<std::string, mapping::Rigid3<float>>& poses,
                 TableVector<SensorSchema::SensorPose> const* tables,
                 detail::UnpackedSize& size)
{
    for (flatbuffers::uoffset_t i = 0; i < sizeOf(tables); ++i) {
        auto const* const table = tables->Get(i);
        if (table->pose() == nullptr ||
            !size.add(sizeInStore(table->name()) + sizeof(mapping::Rigid3<float>))) {
            return false;
        }
        poses[nameOf(table->name())] = fromRecord(*table->pose());
    }
    return true;
}

} // namespace

std::shared_ptr<SensorData> SensorData::read(std::istream& stream)
{
    auto store = std::make_shared<SensorData>();
    auto const frame = detail::readLengthPrefixed(stream);
    if (!frame) {
        return nullptr;
    }
    auto const bytes = frame->bytes();
    auto const* const root = detail::verifiedRoot<SensorSchema::SensorDataRoot>(bytes);
    if (root == nullptr) {
        return nullptr;
    }
    detail::UnpackedSize size(bytes.size());
    if (!unpackSensors(store->imuData, root->imuSensors(), size) ||
        !unpackSensors(store->rangefinderData, root->rangefinderSensors(), size) ||
        !unpackPoses(store->sensorPoses, root->poses(), size))
    {
        return nullptr;
    }
    store->posesApplied = root->posesApplied();
    return store;
}

bool SensorData::write(std::ostream& stream) const
{
    return detail::writeFlatBuffer(
        stream, detail::bufferSizeBound(*this), [this](flatbuffers::FlatBufferBuilder& builder) {
            packStore(builder, *this);
        });
}

} // namespace oV::Roamscan
