#pragma once

#include <Eigen/Core>

/// @file
/// Checks the alignment of Eigen's fixed-size types. Every public header that declares a class with members
/// of these types includes this one.
///
/// Eigen aligns them to 16 bytes by default, but to 32 or 64 bytes when a source is compiled for AVX or
/// AVX-512. The layout of poses, and of everything that contains a pose, would then differ between a plug-in
/// and the library.

#if EIGEN_MAX_STATIC_ALIGN_BYTES != 16
#error                                                                                                       \
    "RoamscanDataStructures needs the definition EIGEN_MAX_STATIC_ALIGN_BYTES=16 in every source that includes its headers; link the CMake target RoamscanDataStructures::RoamscanDataStructures, or compile with -DEIGEN_MAX_STATIC_ALIGN_BYTES=16"
#endif

static_assert(alignof(Eigen::Vector4d) == 16,
              "RoamscanDataStructures needs Eigen's fixed-size types aligned to 16 bytes; compile with "
              "-DEIGEN_MAX_STATIC_ALIGN_BYTES=16 and without EIGEN_DONT_ALIGN");
