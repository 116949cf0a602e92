#pragma once

#include <cstdint>

namespace oV::Roamscan
{

/// The devices of the carried instrument. Which device each of the first four is, the recording software
/// defines; the library treats them alike.
enum class Device : std::int32_t
{
    Device0 = 0,
    Device1 = 1,
    Device2 = 2,
    Device3 = 3,
    DeviceUnknown = 1000 ///< Not a device of the stream format: it is dropped on reading.
};

} // namespace oV::Roamscan
