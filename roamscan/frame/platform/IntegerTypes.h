#pragma once

#include <cstdint>

#if defined(_WIN32)

// Windows has these types. A source that uses their values includes <windows.h>; the public headers do not,
// because its macros would change the sources of every plug-in.
union _ULARGE_INTEGER;
union _LARGE_INTEGER;

#else

/// An unsigned 64-bit integer in a union. On Windows, the platform's own type of this name is used: include
/// `<windows.h>` to use its value.
union _ULARGE_INTEGER
{
    std::uint64_t QuadPart; ///< The value.
};

/// A signed 64-bit integer in a union. On Windows, the platform's own type of this name is used: include
/// `<windows.h>` to use its value.
union _LARGE_INTEGER
{
    std::int64_t QuadPart; ///< The value.
};

#endif

/// A signed 64-bit integer; the type of integer time.
using int64 = std::int64_t;
