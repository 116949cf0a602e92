#pragma once

#include <roamscan/frame/platform/Export.h>

#include <atomic>

namespace oV
{

/// The byte order that conversions to and from streams assume.
class ROAMSCAN_EXPORT Endianness
{
public:
    /// Whether the platform is big-endian; it starts with the truth. Readers and writers of little-endian
    /// formats clear it, on any thread.
    static std::atomic<bool> bigEndian;
};

} // namespace oV
