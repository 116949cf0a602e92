#pragma once

#include "tools/simulation/Motion.h"
#include "tools/simulation/Panorama.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <Eigen/Core>

#include <string>

namespace oV::Roamscan::tool
{

/// A panorama that is taken on the way, and what is told of it.
struct AnchorScan
{
    PanoramaCamera camera;
    AnchorScanMetadata metadata;
};

/// The panorama that the instrument's camera (Device3) takes in the middle of the motion. It stands upright,
/// and its middle shows where the instrument points to. `planFromBuilding` turns the building's frame so that
/// z is up.
///
/// In the metadata, times are integer times, a tenth of a second around the picture's own at most; the angle
/// is that of the picture's middle, in radians in the plan, counterclockwise from its x axis; and the
/// velocity, in radians per second, is 0, for the whole picture is taken at once.
[[nodiscard]] AnchorScan
anchorScan(Motion const& motion, Eigen::Matrix3d const& planFromBuilding, std::string const& pictureName);

} // namespace oV::Roamscan::tool
