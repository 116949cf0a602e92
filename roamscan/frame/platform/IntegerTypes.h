#pragma once

#include <cstdint>

#if defined(_WIN32)
#include <windows.h>
#else

/// An unsigned 64-bit integer in a union. On Windows, the platform's own type of this name is used.
union _ULARGE_INTEGER
{
    std::uint64_t QuadPart; ///< The value.
};

/// A signed 64-bit integer in a union. On Windows, the platform's own type of this name is used.
union _LARGE_INTEGER
{
    std::int64_t QuadPart; ///< The value.
};

#endif

/// A signed 64-bit integer; the type of integer time.
using int64 = std::int64_t;
