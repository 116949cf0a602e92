#pragma once

#include <cstdint>

#if defined(_WIN32)
#include <windows.h>
#else

/// Unsigned 64-bit carrier; Windows' own type of this name where it exists.
union _ULARGE_INTEGER
{
    std::uint64_t QuadPart; ///< The value.
};

/// Signed 64-bit carrier; Windows' own type of this name where it exists.
union _LARGE_INTEGER
{
    std::int64_t QuadPart; ///< The value.
};

#endif

/// Signed 64-bit integer, the carrier of integer time.
using int64 = std::int64_t;
