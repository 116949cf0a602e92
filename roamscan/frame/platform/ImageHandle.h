#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif

namespace oV::Roamscan
{

/// The operating system's handle of a loaded program or library: the `HINSTANCE` on Windows, elsewhere the
/// address at which the image is loaded.
#if defined(_WIN32)
using ImageHandle = HINSTANCE;
#else
using ImageHandle = void*;
#endif

} // namespace oV::Roamscan
