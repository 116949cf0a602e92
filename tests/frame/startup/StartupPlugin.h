#pragma once

#include <roamscan/frame/platform/Export.h>

/// @file
/// A plug-in that a test program loads, and the library with it, or links. The functions have C names, for
/// dlsym().

extern "C" {

/// Whether the library is as it must be directly after it was loaded: attached, with its class records and
/// constants, and without options.
ROAMSCAN_EXPORT bool isFreshlyLoaded();

/// Creates the options and uses them. They stay.
ROAMSCAN_EXPORT bool bringUpOptions();
}
