#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif

namespace oV::Roamscan
{

/// What the operating system knows a loaded program or library by: the `HINSTANCE` on Windows, elsewhere the
/// address at which the image was loaded.
#if defined(_WIN32)
using ImageHandle = HINSTANCE;
#else
using ImageHandle = void*;
#endif

} // namespace oV::Roamscan
