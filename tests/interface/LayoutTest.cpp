/// @file
/// The layouts of the values that plug-ins share with the library, on 64-bit platforms.

#include <roamscan/frame/bvbase/ScanPtColor.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/mapping/Rigid3.h>
#include <roamscan/geometry/IRoamscanData.h>
#include <roamscan/geometry/PlaneTarget.h>
#include <roamscan/geometry/TimeWindow.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryNode.h>
#include <roamscan/trajectorydata/Device.h>

#include <gtest/gtest.h>

#include <cstddef>

using namespace oV::Roamscan;

namespace
{

using ScanPoint = IRoamscanData::ScanPoint;

template <typename T, std::size_t size, std::size_t alignment>
constexpr bool hasLayout = sizeof(T) == size && alignof(T) == alignment;

} // namespace

TEST(Layout, IsPartOfTheBinaryInterface)
{
    static_assert(hasLayout<TimeStamp, 8, 8> && hasLayout<Duration, 8, 8>);
    static_assert(hasLayout<TimeWindow, 16, 8>); // start, end
    static_assert(hasLayout<Device, 4, 4>);
    static_assert(hasLayout<mapping::Rigid3<float>, 28, 4>); // translation x, y, z; rotation x, y, z, w
    static_assert(hasLayout<Bv_1_1::Vec3d<double>, 24, 8>);  // x, y, z
    static_assert(hasLayout<ScanPoint, 20, 4>);              // position, intensity, r, g, b, a
    static_assert(hasLayout<TrafoT<float>, 48, 16>);         // translation; rotation x, y, z, w; flag
    static_assert(hasLayout<TrafoT<double>, 80, 16>);        // the same
    static_assert(hasLayout<TrajectoryNode, 256, 16>);       // pose, time, type, matrices, flag
    static_assert(hasLayout<PlaneTarget, 80, 16>);           // id, position, rotation, lengths
    static_assert(hasLayout<Bv_1_1::String, 8, 8> && hasLayout<Bv_1_1::SmartPtr<Trajectory>, 8, 8>);
    static_assert(hasLayout<IRoamscanData, 8, 8>); // the virtual table
}
