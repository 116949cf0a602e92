#pragma once

/// @file
/// The export macros. The shared libraries export the classes and functions marked with them and hide all
/// others. The static libraries define ROAMSCAN_STATIC; a plug-in that links them exports nothing of them.

#if defined(ROAMSCAN_STATIC)
#define ROAMSCAN_EXPORT
#define ROAMSCAN_NO_EXPORT
#define ROAMSCAN_IMAGERY_EXPORT
#elif defined(_WIN32)
#if defined(ROAMSCAN_BUILDING_LIBRARY)
#define ROAMSCAN_EXPORT __declspec(dllexport)
#else
#define ROAMSCAN_EXPORT __declspec(dllimport)
#endif
#define ROAMSCAN_NO_EXPORT
#if defined(ROAMSCAN_BUILDING_IMAGERY_LIBRARY)
#define ROAMSCAN_IMAGERY_EXPORT __declspec(dllexport)
#else
#define ROAMSCAN_IMAGERY_EXPORT __declspec(dllimport)
#endif
#else
/// Exports a class, function or variable from the shared library.
#define ROAMSCAN_EXPORT __attribute__((visibility("default")))
/// Hides a member of an exported class: a private one that only the library's own sources use.
#define ROAMSCAN_NO_EXPORT __attribute__((visibility("hidden")))
/// Exports a function from the shared library of the component Imagery.
#define ROAMSCAN_IMAGERY_EXPORT __attribute__((visibility("default")))
#endif
