#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <cstdint>
#include <cstring>

namespace support
{

/// The pointer inside a string.
inline void const* sharedValue(Bv_1_1::String const& string)
{
    static_assert(sizeof(Bv_1_1::String) == sizeof(void*));
    void const* value = nullptr;
    std::memcpy(&value, static_cast<void const*>(&string), sizeof value);
    return value;
}

/// The reference count of a string's value. The string must not be NIL.
inline std::uint32_t referenceCount(Bv_1_1::String const& string)
{
    std::uint32_t count = 0;
    std::memcpy(&count, sharedValue(string), sizeof count);
    return count;
}

} // namespace support
