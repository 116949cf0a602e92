#pragma once

#include <cstdint>

namespace oV::Roamscan
{

/// The devices of the carried instrument. The library treats the first four alike; which device each stands
/// for is settled by those who record.
enum class Device : std::int32_t
{
    Device0 = 0,
    Device1 = 1,
    Device2 = 2,
    Device3 = 3,
    DeviceUnknown = 1000 ///< A device that the file format does not know; never comes out of a stream.
};

} // namespace oV::Roamscan
