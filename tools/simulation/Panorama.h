#pragma once

#include "tools/geometry/Building.h"
#include "tools/picture/Colour.h"

#include <Eigen/Core>
#include <opencv2/core/mat.hpp>

#include <string_view>

namespace oV::Roamscan::tool
{

/// An upright camera that takes the whole sphere around it in one picture.
///
/// The picture is equirectangular: columns are proportional to the azimuth, clockwise from left to right, and
/// rows to the angle from the zenith, top to bottom.
struct PanoramaCamera
{
    Eigen::Vector3d position = Eigen::Vector3d::Zero();             ///< Metres, in the building's frame.
    Eigen::Matrix3d planFromBuilding = Eigen::Matrix3d::Identity(); ///< Rotates that frame so that z is up.
    double heading = 0.0; ///< Of the picture's centre: radians in the plan, counterclockwise from its x axis.

    /// The direction of a position in a picture of this size, as a unit vector in the building's frame. The
    /// position is in pixels, x to the right and y down; the centre of a pixel is at half-integers.
    [[nodiscard]] Eigen::Vector3d direction(cv::Size size, double x, double y) const;
};

/// The colour of all surfaces of this name.
[[nodiscard]] Colour surfaceColour(std::string_view name);

/// The appearance of a surface at a hit: its colour, brighter with higher reflectance, a steeper ray and a
/// shorter range.
[[nodiscard]] Colour shade(Surface const& surface, RayHit const& hit);

/// The background.
[[nodiscard]] Colour emptiness();

/// Renders the picture of a building: 8 bits per channel, in the order blue, green, red.
[[nodiscard]] cv::Mat takePanorama(PanoramaCamera const& camera, Building const& building, cv::Size size);

} // namespace oV::Roamscan::tool
