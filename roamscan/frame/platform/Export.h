#pragma once

/// @file
/// The export macro. The library exports the classes and functions marked with ROAMSCAN_EXPORT and hides all
/// others.

#if defined(_WIN32)
#if defined(ROAMSCAN_BUILDING_LIBRARY)
#define ROAMSCAN_EXPORT __declspec(dllexport)
#else
#define ROAMSCAN_EXPORT __declspec(dllimport)
#endif
#else
/// Exports a class, function or variable from the shared library.
#define ROAMSCAN_EXPORT __attribute__((visibility("default")))
#endif
