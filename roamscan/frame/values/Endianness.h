#pragma once

#include <roamscan/frame/platform/Export.h>

#include <atomic>

namespace oV
{

/// The byte order that conversions to and from streams assume.
class ROAMSCAN_EXPORT Endianness
{
public:
    /// Whether streams are big-endian. Initially the byte order of the platform.
    /// @note Each read and write of oV::Roamscan::SensorData and oV::Roamscan::TrajectoryData sets it to
    ///     false, because their stream formats are little-endian.
    static std::atomic<bool> bigEndian;
};

} // namespace oV
