/// @file
/// A small plug-in: it calls functions of the library, catches its exceptions and implements its interface.

#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace
{

class OnePoint final : public oV::Roamscan::RoamscanDataAdapter
{
public:
    bool getScanPtTime(int /*first*/, int /*second*/, int64* time) override
    {
        *time = oV::Roamscan::TimeConversion::convertToIntegerTime(1.5);
        return true;
    }
    ScanPoint getLocalScanPt(int /*first*/, int /*second*/, double const* /*parameters*/) override
    {
        ScanPoint point;
        point.position = {1.0F, 2.0F, 3.0F};
        return point;
    }
};

bool throwsForMissingDevice(oV::Roamscan::TrajectoryData const& store)
{
    try {
        (void)store.buildTrajectoryFromTrajectoryNodes(oV::Roamscan::Device::Device3);
        return false;
    } catch (oV::ThrowableException const& failure) {
        return dynamic_cast<oV::InternalErrorException const*>(&failure) != nullptr;
    }
}

} // namespace

int main()
{
    using oV::Roamscan::Device;
    using oV::Roamscan::TrafoT;
    using oV::Roamscan::TrajectoryData;

    TrajectoryData store;
    store.nodes.emplace_back(1.0, TrafoT<double>::Translation({10, 0, 0}));
    store.nodes.emplace_back(2.0, TrafoT<double>::Translation({20, 0, 0}));
    store.devicePositions[Device::Device0] = TrafoT<double>::Identity();

    std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
    if (!store.write(stream)) {
        return 1;
    }
    auto const back = TrajectoryData::read(stream);
    if (!back || !throwsForMissingDevice(*back)) {
        return 2;
    }
    auto const trajectory = back->buildTrajectoryFromTrajectoryNodes(Device::Device0);
    OnePoint data;
    auto const point = data.getGlobalScanPt(0, 0, trajectory, nullptr);
    std::printf("%g %g %g\n",
                static_cast<double>(point.position.x),
                static_cast<double>(point.position.y),
                static_cast<double>(point.position.z));
    oV::Models::the().clearLog();
    try {
        (void)trajectory.sample(3.0);
    } catch (std::out_of_range const&) {
        return point.position.x == 16.0F && point.position.y == 2.0F && point.position.z == 3.0F ? 0 : 3;
    }
    return 4;
}
