#pragma once

/// @file
/// The export macro. A class or function marked with ROAMSCAN_EXPORT belongs to the library's public surface;
/// everything else is hidden.

#if defined(_WIN32)
#if defined(ROAMSCAN_BUILDING_LIBRARY)
#define ROAMSCAN_EXPORT __declspec(dllexport)
#else
#define ROAMSCAN_EXPORT __declspec(dllimport)
#endif
#else
/// Marks what belongs to the library's public surface.
#define ROAMSCAN_EXPORT __attribute__((visibility("default")))
#endif
