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
    /// @note Each read and write of a sample file sets it to false, on any thread, because the format is
    ///     little-endian.
    static std::atomic<bool> bigEndian;
};

} // namespace oV
