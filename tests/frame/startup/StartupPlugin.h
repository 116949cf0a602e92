#pragma once

#include <roamscan/frame/platform/Export.h>

/// @file
/// A plug-in that a test program loads, and the library with it, or links. The functions have C names, for
/// dlsym() and GetProcAddress().

#if defined(_WIN32)
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT ROAMSCAN_EXPORT
#endif

extern "C" {

/// Whether the library is as it must be directly after it was loaded: attached, with its class records and
/// constants, and without options.
PLUGIN_EXPORT bool isFreshlyLoaded();

/// Creates the options and uses them. They stay.
PLUGIN_EXPORT bool bringUpOptions();
}
