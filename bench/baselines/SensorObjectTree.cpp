#include "bench/baselines/ObjectTrees.h"
#include "tests/support/SensorRecords.h"

#include <roamscan/time/TimeConversion.h>

#include <memory>
#include <utility>
#include <vector>

namespace bench
{

namespace
{

using oV::Roamscan::SensorData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;

std::unique_ptr<oV::Roamscan::SensorSchema::Vec3f> toRecord(mapping::Vector3<double> const& vector)
{
    return std::make_unique<oV::Roamscan::SensorSchema::Vec3f>(
        static_cast<float>(vector.x), static_cast<float>(vector.y), static_cast<float>(vector.z));
}

mapping::Vector3<double> fromRecord(oV::Roamscan::SensorSchema::Vec3f const& record)
{
    return {record.x(), record.y(), record.z()};
}

std::unique_ptr<oV::Roamscan::SensorSchema::ImuSampleT> toTree(mapping::ImuData const& record)
{
    auto sample = std::make_unique<oV::Roamscan::SensorSchema::ImuSampleT>();
    sample->time = record.getTimeStamp().get();
    sample->linearAcceleration = toRecord(record.getLinearAcceleration());
    sample->angularVelocity = toRecord(record.getAngularVelocity());
    if (record.hasMagneticField()) {
        sample->magneticField = toRecord(record.getMagneticField());
    }
    return sample;
}

std::unique_ptr<oV::Roamscan::SensorSchema::RangefinderSampleT> toTree(mapping::RangefinderData const& record)
{
    auto sample = std::make_unique<oV::Roamscan::SensorSchema::RangefinderSampleT>();
    sample->time = record.getTimeStamp().get();
    sample->origin = toRecord(record.getOrigin());
    for (auto const& point : record.getRanges().get()) {
        sample->points.emplace_back(point.position.x, point.position.y, point.position.z, point.time);
    }
    return sample;
}

std::shared_ptr<mapping::ImuData const> fromTree(oV::Roamscan::SensorSchema::ImuSampleT const& sample)
{
    auto const acceleration = fromRecord(*sample.linearAcceleration);
    auto const velocity = fromRecord(*sample.angularVelocity);
    return sample.magneticField ? support::imuSampleWithField(
                                      sample.time, acceleration, velocity, fromRecord(*sample.magneticField))
                                : support::imuSample(sample.time, acceleration, velocity);
}

std::shared_ptr<mapping::RangefinderData const>
fromTree(oV::Roamscan::SensorSchema::RangefinderSampleT const& sample)
{
    std::vector<mapping::TimedRangefinderPoint> points;
    for (auto const& point : sample.points) {
        points.push_back({{point.x(), point.y(), point.z()}, point.time(), {}});
    }
    return support::rangeSample(sample.time, fromRecord(*sample.origin), std::move(points));
}

template <typename Sensor, typename T>
void fillTree(std::vector<std::unique_ptr<Sensor>>& tree, SensorData::Samples<T> const& sensors)
{
    for (auto const& [name, samples] : sensors) {
        auto sensor = std::make_unique<Sensor>();
        sensor->name = name;
        for (auto const& [key, record] : samples) {
            sensor->samples.push_back(toTree(*record));
        }
        tree.push_back(std::move(sensor));
    }
}

template <typename T, typename Sensor>
void fillStore(SensorData::Samples<T>& sensors, std::vector<std::unique_ptr<Sensor>> const& tree)
{
    for (auto const& sensor : tree) {
        for (auto const& sample : sensor->samples) {
            sensors[sensor->name][convertToIntegerTime(sample->time)] = fromTree(*sample);
        }
    }
}

} // namespace

oV::Roamscan::SensorSchema::SensorDataRootT toTree(SensorData const& store)
{
    oV::Roamscan::SensorSchema::SensorDataRootT tree;
    fillTree(tree.imuSensors, store.imuData);
    fillTree(tree.rangefinderSensors, store.rangefinderData);
    for (auto const& [name, pose] : store.sensorPoses) {
        auto record = std::make_unique<oV::Roamscan::SensorSchema::SensorPoseT>();
        record->name = name;
        auto const& [t, r] = pose;
        record->pose =
            std::make_unique<oV::Roamscan::SensorSchema::SensorPoseRecord>(t.x, t.y, t.z, r.w, r.x, r.y, r.z);
        tree.poses.push_back(std::move(record));
    }
    tree.posesApplied = store.posesApplied;
    return tree;
}

std::shared_ptr<SensorData> fromTree(oV::Roamscan::SensorSchema::SensorDataRootT const& tree)
{
    auto store = std::make_shared<SensorData>();
    fillStore(store->imuData, tree.imuSensors);
    fillStore(store->rangefinderData, tree.rangefinderSensors);
    for (auto const& record : tree.poses) {
        auto const& pose = *record->pose;
        store->sensorPoses[record->name] = {{pose.tx(), pose.ty(), pose.tz()},
                                            {pose.qx(), pose.qy(), pose.qz(), pose.qw()}};
    }
    store->posesApplied = tree.posesApplied;
    return store;
}

} // namespace bench
