#pragma once

#if defined(_WIN32)
struct HINSTANCE__; // <windows.h> declares HINSTANCE as a pointer to it
#endif

namespace oV::Roamscan
{

/// The operating system's handle of a loaded program or library: the `HINSTANCE` on Windows, elsewhere an
/// address within the image.
#if defined(_WIN32)
using ImageHandle = HINSTANCE__*;
#else
using ImageHandle = void*;
#endif

} // namespace oV::Roamscan
