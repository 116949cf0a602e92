#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif

namespace oV::Roamscan
{

/// The operating system's handle of a loaded program or library: the `HINSTANCE` on Windows, elsewhere an
/// address within the image.
#if defined(_WIN32)
using ImageHandle = HINSTANCE;
#else
using ImageHandle = void*;
#endif

} // namespace oV::Roamscan
