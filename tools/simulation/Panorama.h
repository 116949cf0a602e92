#pragma once

#include "tools/geometry/Building.h"
#include "tools/picture/Colour.h"

#include <Eigen/Core>
#include <opencv2/core/mat.hpp>

#include <string_view>

namespace oV::Roamscan::tool
{

/// A camera that takes the whole sphere around it in one picture, standing upright.
///
/// The picture is equirectangular. Its columns go once around, from left to right as one turns to the right,
/// and its rows from straight up to straight down; equal steps are equal angles.
struct PanoramaCamera
{
    Eigen::Vector3d position = Eigen::Vector3d::Zero();             ///< Metres, in the building's frame.
    Eigen::Matrix3d planFromBuilding = Eigen::Matrix3d::Identity(); ///< Turns that frame so that z is up.
    double heading =
        0.0; ///< What the picture's middle shows: radians in the plan, counterclockwise from its x axis.

    /// Where a place in a picture of this size looks, as a unit vector in the building's frame. Coordinates
    /// are pixels, x to the right and y down; a pixel's centre lies at half numbers.
    [[nodiscard]] Eigen::Vector3d direction(cv::Size size, double x, double y) const;
};

/// The colour of all surfaces of this name.
[[nodiscard]] Colour surfaceColour(std::string_view name);

/// What a surface looks like where a ray meets it: in its own colour, brighter the more light it sends back,
/// the more it faces the camera and the nearer it is.
[[nodiscard]] Colour shade(Surface const& surface, RayHit const& hit);

/// What is seen where there is no surface.
[[nodiscard]] Colour emptiness();

/// Takes the picture of a building: three bytes a pixel, in the order blue, green, red.
[[nodiscard]] cv::Mat takePanorama(PanoramaCamera const& camera, Building const& building, cv::Size size);

} // namespace oV::Roamscan::tool
