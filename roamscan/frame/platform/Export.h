#pragma once

/// @file
/// The export macros. The libraries export the classes and functions marked with them and hide all others.

#if defined(_WIN32)
#if defined(ROAMSCAN_BUILDING_LIBRARY)
#define ROAMSCAN_EXPORT __declspec(dllexport)
#else
#define ROAMSCAN_EXPORT __declspec(dllimport)
#endif
#if defined(ROAMSCAN_BUILDING_IMAGERY_LIBRARY)
#define ROAMSCAN_IMAGERY_EXPORT __declspec(dllexport)
#else
#define ROAMSCAN_IMAGERY_EXPORT __declspec(dllimport)
#endif
#else
/// Exports a class, function or variable from the shared library.
#define ROAMSCAN_EXPORT __attribute__((visibility("default")))
/// Exports a function from the shared library of the component Imagery.
#define ROAMSCAN_IMAGERY_EXPORT __attribute__((visibility("default")))
#endif
