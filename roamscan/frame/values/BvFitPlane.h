#pragma once

#include <roamscan/frame/bvbase/Vec3d.h>

namespace oV
{

/// The host's fit of a plane to points; only its result is declared here.
struct BvFitPlane
{
    /// The fitted plane, in the frame and the unit of the points. Zero by default.
    struct PlaneParam
    {
        Bv_1_1::Vec3d<double> position;   ///< Centre of the plane.
        Bv_1_1::Vec3d<double> normal;     ///< Unit length.
        Bv_1_1::Vec3d<double> firstAxis;  ///< Major axis in the plane, unit length.
        Bv_1_1::Vec3d<double> secondAxis; ///< Minor axis in the plane, unit length.
        double majorLength = 0.0;         ///< Length along the first axis.
        double minorLength = 0.0;         ///< Length along the second axis.
    };
};

} // namespace oV
