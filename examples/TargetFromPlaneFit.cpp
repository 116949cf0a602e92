/// @file
/// Creates a planar target from a plane fit and copies it through its vectors.

#include <roamscan/geometry/PlaneTarget.h>

#include <cstdio>

using oV::BvFitPlane;
using oV::Roamscan::PlaneTarget;

int main()
{
    BvFitPlane::PlaneParam fit;
    fit.position = {4.0, 2.0, 1.5};
    fit.normal = {1.0, 0.0, 0.0};
    fit.firstAxis = {0.0, 1.0, 0.0};
    fit.secondAxis = {0.0, 0.0, 1.0};
    fit.majorLength = 0.30;
    fit.minorLength = 0.20;

    PlaneTarget target(fit);
    target.id(1);

    auto const [position, normal, major, minor] = target.planeParams();
    Eigen::Vector3d const corner = position + (major + minor) / 2;
    std::printf("target %d: corner at (%.2f, %.2f, %.2f)\n", target.id(), corner.x(), corner.y(), corner.z());

    PlaneTarget received;
    Eigen::Matrix<double, 3, 4> columns;
    columns << position, normal, major, minor;
    received.planeParams(columns);
    return received.normal().isApprox(target.normal()) ? 0 : 1;
}
