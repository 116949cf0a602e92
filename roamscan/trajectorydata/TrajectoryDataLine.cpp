/// @file
/// TrajectoryData as a scene object.

#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>
#include <roamscan/trajectorydata/TrajectoryData.h>
#include <roamscan/trajectorydata/detail/DrawTrajectory.h>

namespace oV::Roamscan
{

Bv_1_1::SmartPtr<Transform>
TrajectoryData::lineFromTrajectory(bool withNodes, Bv_1_1::String const& name, Device from, Device to) const
{
    return detail::drawTrajectory<Transform, Line, Sphere>(*this, withNodes, name, from, to);
}

Bv_1_1::SmartPtr<Transform>
TrajectoryData::lineFromTrajectory(bool withNodes, Bv_1_1::String const& name, Device device) const
{
    return lineFromTrajectory(withNodes, name, device, device);
}

} // namespace oV::Roamscan
