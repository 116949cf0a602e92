#pragma once

#include <cstdint>

namespace oV::Roamscan
{

/// The devices of the carried instrument. The recording software defines which device each of the first four
/// is; this library treats them alike.
enum class Device : std::int32_t
{
    Device0 = 0,
    Device1 = 1,
    Device2 = 2,
    Device3 = 3,
    DeviceUnknown = 1000 ///< Any other device. TrajectoryData::readFromStream() drops it.
};

} // namespace oV::Roamscan
