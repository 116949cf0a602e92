#pragma once

#include "tools/simulation/Motion.h"
#include "tools/simulation/Panorama.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <Eigen/Core>

#include <string>

namespace oV::Roamscan::tool
{

/// A panorama that is taken during the motion, and its metadata.
struct AnchorScan
{
    PanoramaCamera camera;
    AnchorScanMetadata metadata;
};

/// The panorama that the instrument's camera (Device3) takes in the middle of the motion. It is upright, and
/// its centre shows the forward direction of the instrument. `planFromBuilding` rotates the building's frame
/// so that z is up.
///
/// In the metadata, the start and the end are at most 0.05 s from the time of the picture, all in integer
/// time. The angle is that of the picture's centre: in radians in the plan, counterclockwise from its x axis.
/// The velocity (radians per second) is 0, because the whole picture is taken at once.
[[nodiscard]] AnchorScan
anchorScan(Motion const& motion, Eigen::Matrix3d const& planFromBuilding, std::string const& pictureName);

} // namespace oV::Roamscan::tool
