#pragma once

/// @file
/// The export macros. The shared libraries export the classes and functions marked with them and hide all
/// others. The static libraries define ROAMSCAN_STATIC; a plug-in that links them exports nothing of them.

#if defined(ROAMSCAN_STATIC)

#define ROAMSCAN_EXPORT
#define ROAMSCAN_NO_EXPORT
#define ROAMSCAN_EXPORT_TEMPLATE
#define ROAMSCAN_EXPORT_DECLARED_INSTANCE
#define ROAMSCAN_EXPORT_DEFINED_INSTANCE
#define ROAMSCAN_DECLARES_INSTANCES 1
#define ROAMSCAN_IMAGERY_EXPORT

#elif defined(_WIN32)

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
#define ROAMSCAN_NO_EXPORT
// The instances of a template are exported one by one; a marked template would make the compiler look in the
// library for instances that only the plug-in has. Microsoft's compiler exports an instance where it is
// defined, GCC where it is declared.
#define ROAMSCAN_EXPORT_TEMPLATE
#if defined(ROAMSCAN_BUILDING_LIBRARY) && defined(_MSC_VER)
#define ROAMSCAN_EXPORT_DECLARED_INSTANCE
#define ROAMSCAN_EXPORT_DEFINED_INSTANCE __declspec(dllexport)
#else
#define ROAMSCAN_EXPORT_DECLARED_INSTANCE ROAMSCAN_EXPORT
#define ROAMSCAN_EXPORT_DEFINED_INSTANCE
#endif
// GCC for Windows does not export the inline members of an instance, and in a plug-in it would not make them
// if the header declared the instance.
#if defined(__MINGW32__) && !defined(ROAMSCAN_BUILDING_LIBRARY)
#define ROAMSCAN_DECLARES_INSTANCES 0
#else
#define ROAMSCAN_DECLARES_INSTANCES 1
#endif

#else

/// Exports a class, function or variable from the shared library.
#define ROAMSCAN_EXPORT __attribute__((visibility("default")))
/// Hides a member of an exported class: a private one that only the library's own sources use. Has no effect
/// on Windows, where all members of an exported class are exported.
#define ROAMSCAN_NO_EXPORT __attribute__((visibility("hidden")))
/// Marks a class template that has exported instances.
#define ROAMSCAN_EXPORT_TEMPLATE ROAMSCAN_EXPORT
/// Exports an instance of a class template; for its declaration in the header, `extern template class`.
#define ROAMSCAN_EXPORT_DECLARED_INSTANCE ROAMSCAN_EXPORT
/// Exports an instance of a class template; for its definition in the source, `template class`.
#define ROAMSCAN_EXPORT_DEFINED_INSTANCE
/// Whether the headers declare the instances of class templates that the library has, `extern template
/// class`.
#define ROAMSCAN_DECLARES_INSTANCES 1
/// Exports a function from the shared library of the component Imagery.
#define ROAMSCAN_IMAGERY_EXPORT __attribute__((visibility("default")))

#endif
