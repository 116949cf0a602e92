#pragma once

#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/values/BvFitPlane.h>

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <array>

namespace oV::Roamscan
{

/// The id of a target that has not been identified: -1.
extern ROAMSCAN_EXPORT int const invalidTarget;

/// A bounded planar target in space: its centre, its orientation, and the lengths of its two axes in the
/// plane. Positions and lengths share one unit, which the caller chooses.
///
/// No operation throws or checks its arguments. Zero vectors and numbers that are not finite give meaningless
/// results.
class ROAMSCAN_EXPORT PlaneTarget
{
public:
    using Vector = Eigen::Matrix<double, 3, 1>;      ///< x, y, z.
    using Quaternion = Eigen::Quaternion<double>;    ///< Coefficients held in the order x, y, z, w.
    using ParamMatrix = Eigen::Matrix<double, 3, 4>; ///< Columns: position, normal, major, minor axis.

    /// A target with id `invalidTarget` and zero lengths.
    /// @param normal need not be of unit length; its length must be between 1e-75 and 1e75
    /// @param position the centre of the plane
    /// @warning The rotation is the inverse of the one that takes Z to `normal`; kept for compatibility. So
    ///     normal() does not return `normal` unless it is along Z. To set the orientation, use planeParams()
    ///     or setFromPlaneFit().
    // NOLINTNEXTLINE(google-explicit-constructor): implicit in the interface
    PlaneTarget(Vector const& normal = Vector::UnitZ(), Vector const& position = Vector::Zero());

    /// A target with id `invalidTarget` from the result of a plane fit; see setFromPlaneFit().
    // NOLINTNEXTLINE(google-explicit-constructor): implicit in the interface
    PlaneTarget(BvFitPlane::PlaneParam const& param);

    /// Sets position, axes and lengths from a plane fit. Negates the first axis if the fit's axes are
    /// left-handed. The id does not change.
    /// @param param its normal and axes must be of unit length and perpendicular to each other
    void setFromPlaneFit(BvFitPlane::PlaneParam const& param);

    /// The identifier; `invalidTarget` until it is set.
    [[nodiscard]] int const& id() const { return id_; }
    /// Sets the identifier.
    void id(int const& value) { id_ = value; }

    /// The centre of the plane.
    [[nodiscard]] Vector const& position() const { return position_; }
    /// Sets the centre.
    void position(Vector const& value) { position_ = value; }

    /// Rotates from the target's frame to space. In the target's frame X is the major axis, Y the minor axis
    /// and Z the normal.
    [[nodiscard]] Quaternion const& rotation() const { return rotation_; }
    /// Sets the rotation without normalising it.
    void rotation(Quaternion const& value) { rotation_ = value; }

    /// The length along the major axis.
    [[nodiscard]] double const& majAxisLength() const { return majAxisLength_; }
    /// Sets the length along the major axis.
    void majAxisLength(double const& value) { majAxisLength_ = value; }

    /// The length along the minor axis.
    [[nodiscard]] double const& minAxisLength() const { return minAxisLength_; }
    /// Sets the length along the minor axis.
    void minAxisLength(double const& value) { minAxisLength_ = value; }

    /// The direction of the major axis in space. Of unit length if rotation() is.
    [[nodiscard]] Vector majAxis() const;

    /// The direction of the minor axis in space. Of unit length if rotation() is.
    [[nodiscard]] Vector minAxis() const;

    /// The direction of the normal in space. Of unit length if rotation() is.
    [[nodiscard]] Vector normal() const;

    /// @return position, normal, major axis and minor axis; the axes have the target's lengths
    [[nodiscard]] std::array<Vector, 4> planeParams() const;

    /// Sets position, orientation and lengths. The id does not change.
    /// @param params position, normal, major axis and minor axis as columns. The lengths of the axes become
    ///     the lengths of the target. The normal must be of unit length, and major axis, minor axis and
    ///     normal must be a right-handed frame; neither is checked.
    void planeParams(ParamMatrix const& params);

private:
    int id_;
    Vector position_;
    Quaternion rotation_;
    double majAxisLength_ = 0.0;
    double minAxisLength_ = 0.0;
};

} // namespace oV::Roamscan
