/// @file
/// Rotating the samples of each sensor by its pose.

#include <roamscan/frame/platform/detail/ParallelTasks.h>
#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/NearestRotation.h>
#include <roamscan/time/detail/RotateVector.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace oV::Roamscan
{

namespace
{

using Pose = mapping::Rigid3<float>;

// Rotates by the nearest rotation matrix (by SVD), also if the quaternion is not of unit length. Drops the
// magnetic field; kept for compatibility.
void rotateSamples(SampleMap<mapping::ImuData>& samples, Pose const& pose)
{
    Eigen::Matrix3f const block = TrafoT<float>(pose, true).ToEigen().linear();
    Eigen::Matrix3d const rotation = detail::nearestRotation<float, 3>(block).cast<double>();
    for (auto& [key, record] : samples) {
        record = std::make_shared<mapping::ImuData const>(
            record->getTimeStamp(),
            toVector3(rotation * toEigen(record->getLinearAcceleration())),
            toVector3(rotation * toEigen(record->getAngularVelocity())));
    }
}

// Rotates by the quaternion without normalising it. Keeps the origin and drops the auxiliaries; kept for
// compatibility.
void rotateSamples(SampleMap<mapping::RangefinderData>& samples, Pose const& pose)
{
    Eigen::Quaternionf const rotation = toEigen(pose.rotation);
    for (auto& [key, record] : samples) {
        std::vector<mapping::TimedRangefinderPoint> points;
        points.reserve(record->getRanges().get().size());
        for (auto const& point : record->getRanges().get()) {
            Eigen::Vector3f const position = detail::rotateVector<float>(rotation, toEigen(point.position));
            points.push_back({toVector3(position), point.time, {}});
        }
        record = std::make_shared<mapping::RangefinderData const>(
            record->getTimeStamp(), record->getOrigin(), mapping::TimedPointCloud(std::move(points)));
    }
}

template <typename T>
bool rotateSensor(SensorData::Samples<T>& sensors, std::string const& name, Pose const& pose)
{
    auto const sensor = sensors.find(name);
    if (sensor == sensors.end()) {
        return false;
    }
    rotateSamples(sensor->second, pose);
    return true;
}

} // namespace

void SensorData::applyPoses()
{
    if (posesApplied) {
        return;
    }
    // Each task replaces the records of one sensor only and changes no container, so the tasks do not share
    // anything that is written.
    std::vector<decltype(sensorPoses)::const_pointer> sensors;
    for (auto const& sensor : sensorPoses) {
        sensors.push_back(&sensor);
    }
    detail::inParallel(sensors.size(), [this, &sensors](std::size_t i) {
        auto const& [name, pose] = *sensors[i];
        (void)(rotateSensor(imuData, name, pose) || rotateSensor(rangefinderData, name, pose) ||
               rotateSensor(secondRangefinderData, name, pose));
    });
    posesApplied = true;
}

} // namespace oV::Roamscan
