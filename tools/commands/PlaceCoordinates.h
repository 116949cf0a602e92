#pragma once

#include "tools/clouds/CloudFile.h"

#include <roamscan/trajectory/Trajectory.h>

#include <Eigen/Core>

#include <optional>
#include <string>

namespace oV::Roamscan::tool
{

/// How the coordinates of placed points are written: as doubles, as floats relative to an origin, or as the
/// integers of LAS.
struct PlaceCoordinates
{
    std::optional<Eigen::Vector3d> floatOrigin; ///< If coordinates are floats.
    std::optional<Eigen::Vector3d> stepOrigin;  ///< If coordinates are integers.
    double step = 1e-6;                         ///< Metres; for integers.
};

/// Chooses the coordinates.
/// @param offset "X,Y,Z", or "auto" for the middle of the path rounded to 100 m; nothing for doubles. LAS
/// always has an origin; there "auto" is the default, and the step is the smallest power of ten from 1e-6 m
/// on with which points up to 500 m from the path fit.
/// @throws ToolError if the offset is neither
[[nodiscard]] PlaceCoordinates chooseCoordinates(std::optional<std::string> const& offset,
                                                 std::optional<CloudFormat> format,
                                                 Trajectory const& trajectory);

} // namespace oV::Roamscan::tool
