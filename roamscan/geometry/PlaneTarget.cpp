#include <roamscan/geometry/PlaneTarget.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/detail/RotateVector.h>

#include <cmath>

namespace oV::Roamscan
{

namespace
{

using Vector = PlaneTarget::Vector;
using Quaternion = PlaneTarget::Quaternion;

Quaternion rotationTo(Vector const& xAxis, Vector const& yAxis, Vector const& zAxis)
{
    Eigen::Matrix<double, 3, 3> frame;
    frame << xAxis, yAxis, zAxis;
    return Quaternion(frame);
}

bool isLeftHanded(Vector const& xAxis, Vector const& yAxis, Vector const& zAxis)
{
    return zAxis.dot(xAxis.cross(yAxis)) < 0.0;
}

// The coordinate axis with the largest angle to the vector. If several have it, the first one.
Vector farthestAxis(Vector const& vector)
{
    Vector const size = vector.cwiseAbs();
    Eigen::Index axis = size.y() < size.x() ? 1 : 0;
    if (size.z() < size[axis]) {
        axis = 2;
    }
    return Vector::Unit(axis);
}

Quaternion rotationFromNormal(Vector normal)
{
    Vector major = normal.cross(farthestAxis(normal));
    Vector minor = normal.cross(major);
    // normalize() leaves a zero vector unchanged.
    major.normalize();
    minor.normalize();
    normal.normalize();
    if (isLeftHanded(major, minor, normal)) {
        major = -major; // possible by rounding only
    }
    // Conjugated, unlike every other rotation of a target. Kept for compatibility with stored targets.
    return rotationTo(major, minor, normal).conjugate();
}

} // namespace

constinit int const invalidTarget = -1;

PlaneTarget::PlaneTarget(Vector const& normal, Vector const& position)
    : id_(invalidTarget), position_(position), rotation_(rotationFromNormal(normal))
{}

PlaneTarget::PlaneTarget(BvFitPlane::PlaneParam const& param)
    : id_(invalidTarget), position_(Vector::Zero()), rotation_(Quaternion::Identity())
{
    setFromPlaneFit(param);
}

void PlaneTarget::setFromPlaneFit(BvFitPlane::PlaneParam const& param)
{
    majAxisLength_ = param.majorLength;
    minAxisLength_ = param.minorLength;

    Vector const normal = toEigen(param.normal);
    Vector major = toEigen(param.firstAxis);
    Vector const minor = toEigen(param.secondAxis);
    if (isLeftHanded(major, minor, normal)) {
        major = -major;
    }
    rotation_ = rotationTo(major, minor, normal);
    position_ = toEigen(param.position);
}

PlaneTarget::Vector PlaneTarget::majAxis() const
{
    return detail::rotateVector<double>(rotation_, Vector::UnitX());
}

PlaneTarget::Vector PlaneTarget::minAxis() const
{
    return detail::rotateVector<double>(rotation_, Vector::UnitY());
}

PlaneTarget::Vector PlaneTarget::normal() const
{
    return detail::rotateVector<double>(rotation_, Vector::UnitZ());
}

std::array<PlaneTarget::Vector, 4> PlaneTarget::planeParams() const
{
    return {position_, normal(), majAxis() * majAxisLength_, minAxis() * minAxisLength_};
}

void PlaneTarget::planeParams(ParamMatrix const& params)
{
    Vector major = params.col(2);
    Vector minor = params.col(3);
    majAxisLength_ = major.norm();
    minAxisLength_ = minor.norm();
    // normalize() leaves a zero vector unchanged.
    major.normalize();
    minor.normalize();
    rotation_ = rotationTo(major, minor, params.col(1));
    position_ = params.col(0);
}

} // namespace oV::Roamscan
