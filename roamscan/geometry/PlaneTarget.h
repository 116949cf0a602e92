#pragma once

#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/values/BvFitPlane.h>

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <array>

namespace oV::Roamscan
{

/// The id of a target that has no identity yet: -1.
extern ROAMSCAN_EXPORT int const invalidTarget;

/// A bounded planar target in space: its centre, its orientation, and the lengths of its two axes in the
/// plane. Positions and lengths are in one unit, the one of whoever fills it in.
///
/// A plain value. Nothing fails: zero vectors and numbers that are not finite flow through the formulas. Many
/// threads may read a target; writing needs the caller's own exclusion.
class ROAMSCAN_EXPORT PlaneTarget
{
public:
    using Vector = Eigen::Matrix<double, 3, 1>;      ///< x, y, z.
    using Quaternion = Eigen::Quaternion<double>;    ///< Coefficients held in the order x, y, z, w.
    using ParamMatrix = Eigen::Matrix<double, 3, 4>; ///< Columns: position, normal, major, minor axis.

    /// A target without an identity and with zero lengths, turned by a normal. The normal counts by its
    /// direction alone while its length is between 1e-75 and 1e75; beyond that, and for zero, the rotation
    /// has no meaning.
    ///
    /// Callers may rely on the rotation being the conjugate of the one that takes Z to the normal: normal()
    /// is `normal` again if that lies along Z, and another vector in general. To have a frame as it is, use
    /// planeParams() or setFromPlaneFit().
    // NOLINTNEXTLINE(google-explicit-constructor): the interface has it implicit
    PlaneTarget(Vector const& normal = Vector::UnitZ(), Vector const& position = Vector::Zero());

    /// A target without an identity from the result of a plane fit.
    // NOLINTNEXTLINE(google-explicit-constructor): the interface has it implicit
    PlaneTarget(BvFitPlane::PlaneParam const& param);

    /// Takes position, axes and lengths of a plane fit. The first axis is negated if the fit's frame is
    /// left-handed. Normal and axes are taken as they stand: the fit brings them perpendicular to each other
    /// and with unit length. The id stays.
    void setFromPlaneFit(BvFitPlane::PlaneParam const& param);

    /// The identifier, `invalidTarget` until it is set.
    [[nodiscard]] int const& id() const { return id_; }
    /// Sets the identifier.
    void id(int const& value) { id_ = value; }

    /// The centre of the plane.
    [[nodiscard]] Vector const& position() const { return position_; }
    /// Sets the centre.
    void position(Vector const& value) { position_ = value; }

    /// Target frame to space: X is the major axis, Y the minor axis, Z the normal.
    [[nodiscard]] Quaternion const& rotation() const { return rotation_; }
    /// Sets the rotation as it is, without normalising it.
    void rotation(Quaternion const& value) { rotation_ = value; }

    /// The length along the major axis.
    [[nodiscard]] double const& majAxisLength() const { return majAxisLength_; }
    /// Sets the length along the major axis.
    void majAxisLength(double const& value) { majAxisLength_ = value; }

    /// The length along the minor axis.
    [[nodiscard]] double const& minAxisLength() const { return minAxisLength_; }
    /// Sets the length along the minor axis.
    void minAxisLength(double const& value) { minAxisLength_ = value; }

    /// The direction of the major axis in space; unit length as rotation() has it, whatever majAxisLength()
    /// is.
    [[nodiscard]] Vector majAxis() const;

    /// The direction of the minor axis in space, likewise.
    [[nodiscard]] Vector minAxis() const;

    /// The direction of the normal in space, likewise.
    [[nodiscard]] Vector normal() const;

    /// Position, normal, and the major and the minor axis in their lengths.
    [[nodiscard]] std::array<Vector, 4> planeParams() const;

    /// Takes what the other planeParams() gives, as the columns of a matrix. The axes may have any length,
    /// which becomes the target's; the normal is taken as it stands, and nothing looks at the handedness: the
    /// caller brings a right-handed frame with a unit normal. The id stays.
    void planeParams(ParamMatrix const& params);

private:
    int id_;
    Vector position_;
    Quaternion rotation_;
    double majAxisLength_ = 0.0;
    double minAxisLength_ = 0.0;
};

} // namespace oV::Roamscan
