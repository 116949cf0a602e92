#pragma once

#include <roamscan/frame/bvbase/Mat4d.h>
#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/EigenConversion.h>

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <array>
#include <limits>

namespace oV::Roamscan
{

/// A rigid transform in 3D: a translation, a unit quaternion, and a flag that says whether the value is a
/// real pose. It maps a point p to `rotation * p + translation`.
///
/// `T` is `float` or `double`. `TrafoT<float>` computes in `float` throughout.
///
/// The quaternion is never normalised; the caller ensures unit length. No function throws: NaN and infinite
/// values propagate through the formulas. Concurrent reads of a value are safe.
/// @warning The flag is plain data. It is set by the constructors and copied, but not computed from the
///     numbers: a transform with NaN may be valid(). Use allFinite() to check the numbers.
template <typename T>
class TrafoT
{
public:
    using Scalar = T; ///< The type of all numbers.
    /// x, y, z.
    using Vector = Eigen::Matrix<T, 3, 1>;
    /// Coefficients held in the order x, y, z, w.
    using Quaternion = Eigen::Quaternion<T>;
    /// A rigid transform in 3D as a homogeneous 4x4 matrix.
    using Transform3D = Eigen::Transform<T, 3, Eigen::Isometry, 0>;
    /// A rigid transform in 2D as a homogeneous 3x3 matrix.
    using Transform2D = Eigen::Transform<T, 2, Eigen::Isometry, 0>;

    /// The identity, valid.
    TrafoT() : TrafoT(Vector::Zero(), Quaternion::Identity(), true) {}

    /// Stores the three values unchanged.
    TrafoT(Vector const& translation, Quaternion const& rotation, bool valid)
        : translation_(translation), rotation_(rotation), valid_(valid)
    {}

    /// The same, with the rotation first.
    TrafoT(Quaternion const& rotation, Vector const& translation, bool valid)
        : TrafoT(translation, rotation, valid)
    {}

    /// Copies the seven numbers unchanged.
    TrafoT(mapping::Rigid3<T> const& rigid, bool valid)
        : TrafoT(toEigen(rigid.translation), toEigen(rigid.rotation), valid)
    {}

    /// Converts a column-major 4x4 matrix. The translation is elements 12 to 14. The rotation is the nearest
    /// rotation to the upper left 3x3 block, by SVD; scale and shear are discarded.
    TrafoT(Bv_1_1::Mat4d<T> const& matrix, bool valid);

    /// The identity, valid.
    [[nodiscard]] static TrafoT Identity() { return TrafoT(); }

    /// A transform that is not valid, with seven NaN.
    [[nodiscard]] static TrafoT Invalid()
    {
        constexpr T nan = std::numeric_limits<T>::quiet_NaN();
        return TrafoT(Vector(nan, nan, nan), Quaternion(nan, nan, nan, nan), false);
    }

    /// A translation without rotation, valid.
    [[nodiscard]] static TrafoT Translation(Vector const& translation)
    {
        return TrafoT(translation, Quaternion::Identity(), true);
    }

    /// A rotation without translation, valid.
    [[nodiscard]] static TrafoT Rotation(Quaternion const& rotation)
    {
        return TrafoT(Vector::Zero(), rotation, true);
    }

    /// Reads a transform from two arrays; valid.
    /// @param translation three values x, y, z
    /// @param rotation four values x, y, z, w
    /// @warning This is not the inverse of serialize(), which puts w before x, y, z.
    [[nodiscard]] static TrafoT FromArrays(T const* const translation, T const* const rotation)
    {
        return TrafoT(Vector(translation[0], translation[1], translation[2]),
                      Quaternion(rotation[3], rotation[0], rotation[1], rotation[2]),
                      true);
    }

    /// Converts a matrix transform; valid. The rotation is the nearest rotation to the linear part, by SVD.
    [[nodiscard]] static TrafoT FromEigen(Transform3D const& transform);

    /// Embeds a 2D transform in 3D: a rotation about z and a translation in the xy plane; valid. Project2D()
    /// reverts it.
    [[nodiscard]] static TrafoT Embed3D(Transform2D const& transform);

    /// A random pose, valid. The translation is uniform in [-1, 1]^3. The rotation is uniform over all
    /// rotations, by Shoemake's method ("Uniform random rotations", Graphics Gems III, 1992).
    ///
    /// Calls `std::rand` six times, so `std::srand` makes it repeatable. As thread-safe as `std::rand`.
    [[nodiscard]] static TrafoT Random();

    /// The translation in the target frame.
    [[nodiscard]] Vector const& translation() const { return translation_; }
    /// @overload
    [[nodiscard]] Vector& translation() { return translation_; }

    /// The rotation, as stored; not normalised.
    [[nodiscard]] Quaternion const& rotation() const { return rotation_; }
    /// @overload
    [[nodiscard]] Quaternion& rotation() { return rotation_; }

    /// Whether the value is marked as a real pose.
    [[nodiscard]] bool valid() const { return valid_; }

    /// Whether all seven numbers are finite. The flag is ignored.
    [[nodiscard]] bool allFinite() const;

    /// The seven numbers: translation x, y, z, then rotation w, x, y, z.
    [[nodiscard]] std::array<T, 7> serialize() const;

    /// Converts to a matrix transform. The flag is lost.
    [[nodiscard]] Transform3D ToEigen() const;

    /// Projects the transform to the xy plane: keeps x, y and the yaw, which is the direction of the rotated
    /// x axis. Discards z, roll and pitch.
    [[nodiscard]] Transform2D Project2D() const;

    /// The inverse transform. The rotation is the conjugate of the quaternion.
    /// @warning The result is always valid(), also if this transform is not. Check the operand first.
    [[nodiscard]] TrafoT inverse() const;

    /// Interpolates between two poses: linear interpolation of the translation, slerp along the shorter arc
    /// of the rotation (Shoemake, "Animating rotation with quaternion curves", SIGGRAPH 1985).
    ///
    /// The rotation is not normalised. For nearly equal rotations slerp is replaced by linear interpolation,
    /// so the quaternion is slightly shorter than 1.
    /// @param other the pose at fraction 1
    /// @param fraction 0 gives this pose, 1 gives `other`; values outside [0, 1] extrapolate
    /// @warning The result is always valid(), also if an operand is not. Check the operands first.
    [[nodiscard]] TrafoT interpolate(TrafoT const& other, double fraction) const;

    /// Whether the translations and the rotation matrices of two transforms are equal up to a relative
    /// error: |a - b| <= precision * min(|a|, |b|), by Euclidean norm for translations and by Frobenius norm
    /// for rotation matrices. The flags are not compared.
    ///
    /// A zero translation equals only a zero translation. Translations of every magnitude compare this way,
    /// also where their squares underflow or overflow. The quaternions q and -q are equal.
    /// @note A translation with NaN equals every translation. A rotation with NaN equals none, so Invalid()
    ///     is not equal to itself.
    /// @param other the transform to compare with
    /// @param precision the relative error; narrowed to `float` in `TrafoT<float>`
    [[nodiscard]] bool isApprox(TrafoT const& other, double precision) const;

    /// isApprox() with precision 1e-12: an approximate comparison, and therefore not transitive.
    [[nodiscard]] bool operator==(TrafoT const& other) const { return isApprox(other, 1e-12); }
    [[nodiscard]] bool operator!=(TrafoT const& other) const { return !(*this == other); }

    /// The composition: `(a * b) * p` equals `a * (b * p)` up to rounding. Valid if both operands are.
    [[nodiscard]] TrafoT operator*(TrafoT const& other) const;

    /// Transforms a point.
    [[nodiscard]] Vector operator*(Vector const& point) const;

private:
    Vector translation_;
    Quaternion rotation_;
    bool valid_;
};

#if ROAMSCAN_DECLARES_INSTANCES
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE TrafoT<float>;
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE TrafoT<double>;
#endif

} // namespace oV::Roamscan
