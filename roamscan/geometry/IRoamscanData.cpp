#include <roamscan/geometry/IRoamscanData.h>
#include <roamscan/time/EigenConversion.h>

#include <Eigen/Geometry>

namespace oV::Roamscan
{

IRoamscanData::IRoamscanData() = default;
IRoamscanData::IRoamscanData(IRoamscanData const& other) = default;
IRoamscanData::IRoamscanData(IRoamscanData&& other) noexcept = default;
IRoamscanData& IRoamscanData::operator=(IRoamscanData const& other) = default;
IRoamscanData& IRoamscanData::operator=(IRoamscanData&& other) noexcept = default;
IRoamscanData::~IRoamscanData() = default;

std::map<Device, std::map<int64, Eigen::Matrix<double, 3, 1>>>
IRoamscanData::getGravityAxisOfAnchorSections() const
{
    return {};
}

IRoamscanData::ScanPoint
IRoamscanData::getGlobalScanPt(int first, int second, Trajectory const& trajectory, double const* parameters)
{
    int64 time = 0;
    if (!getScanPtTime(first, second, &time) || !trajectory.contains(time)) {
        return ScanPoint{};
    }
    ScanPoint point = getLocalScanPt(first, second, parameters);
    auto& position = point.position;
    if (position.x == 0.0F && position.y == 0.0F && position.z == 0.0F) {
        return point;
    }
    TrafoT<double> const pose = trajectory.sample(time);
    Eigen::Vector3d const local = toEigen(position).cast<double>();
    Eigen::Vector3d const global = pose.rotation().toRotationMatrix() * local + pose.translation();
    position = toVec3d(global.cast<float>());
    return point;
}

} // namespace oV::Roamscan
