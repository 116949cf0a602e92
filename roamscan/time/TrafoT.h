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

/// A rigid transform: a translation, a unit quaternion, and a flag that says whether the value is a real
/// pose. A point p maps to `rotation * p + translation`.
///
/// The flag is plain data, set by the constructors and copied along. It is neither derived from the numbers
/// nor tested against them: a transform may be `valid()` with NaN inside.
///
/// No operation normalises the quaternion; callers own its unit length. Nothing throws: non-finite numbers
/// flow through the formulas, and only `valid()` and `allFinite()` tell of them. A value may be read by any
/// number of threads at once.
///
/// `T` is `float` or `double`. The arithmetic of `TrafoT<float>` is done in `float` throughout.
template <typename T>
class TrafoT
{
public:
    using Scalar = T; ///< The type of every number.
    /// x, y, z.
    using Vector = Eigen::Matrix<T, 3, 1>;
    /// Coefficients held in the order x, y, z, w.
    using Quaternion = Eigen::Quaternion<T>;
    /// A rigid transform of space as a homogeneous matrix.
    using Transform3D = Eigen::Transform<T, 3, Eigen::Isometry, 0>;
    /// A rigid transform of the plane as a homogeneous matrix.
    using Transform2D = Eigen::Transform<T, 2, Eigen::Isometry, 0>;

    /// The identity, valid.
    TrafoT() : TrafoT(Vector::Zero(), Quaternion::Identity(), true) {}

    /// Stores the three values as they are.
    TrafoT(Vector const& translation, Quaternion const& rotation, bool valid)
        : translation_(translation), rotation_(rotation), valid_(valid)
    {}

    /// The same with the rotation first.
    TrafoT(Quaternion const& rotation, Vector const& translation, bool valid)
        : TrafoT(translation, rotation, valid)
    {}

    /// Copies the seven numbers.
    TrafoT(mapping::Rigid3<T> const& rigid, bool valid)
        : TrafoT(toEigen(rigid.translation), toEigen(rigid.rotation), valid)
    {}

    /// From a column-major 4x4 matrix: the translation is elements 12 to 14, the rotation the one nearest to
    /// the upper left block, so that scale and shear are dropped.
    TrafoT(Bv_1_1::Mat4d<T> const& matrix, bool valid);

    /// The identity, valid.
    [[nodiscard]] static TrafoT Identity() { return TrafoT(); }

    /// All seven numbers NaN, not valid.
    [[nodiscard]] static TrafoT Invalid()
    {
        constexpr T nan = std::numeric_limits<T>::quiet_NaN();
        return TrafoT(Vector(nan, nan, nan), Quaternion(nan, nan, nan, nan), false);
    }

    /// A pure translation, valid.
    [[nodiscard]] static TrafoT Translation(Vector const& translation)
    {
        return TrafoT(translation, Quaternion::Identity(), true);
    }

    /// A pure rotation, valid.
    [[nodiscard]] static TrafoT Rotation(Quaternion const& rotation)
    {
        return TrafoT(Vector::Zero(), rotation, true);
    }

    /// From three values x, y, z and four values x, y, z, w; valid.
    ///
    /// Callers may rely on w coming last here although it comes first in serialize(): the two are not inverse
    /// to each other.
    [[nodiscard]] static TrafoT FromArrays(T const* const translation, T const* const rotation)
    {
        return TrafoT(Vector(translation[0], translation[1], translation[2]),
                      Quaternion(rotation[3], rotation[0], rotation[1], rotation[2]),
                      true);
    }

    /// The translation column, and the rotation nearest to the linear part; valid.
    [[nodiscard]] static TrafoT FromEigen(Transform3D const& transform);

    /// The transform of the plane as one of space that leaves z alone; valid. Project2D() gives its yaw back.
    [[nodiscard]] static TrafoT Embed3D(Transform2D const& transform);

    /// A random pose, valid: the translation uniform in the cube from -1 to 1, the rotation uniform over all
    /// rotations. Six draws of `std::rand`, so `std::srand` repeats a sequence; as thread safe as `std::rand`
    /// is.
    [[nodiscard]] static TrafoT Random();

    /// The translation in the target frame.
    [[nodiscard]] Vector const& translation() const { return translation_; }
    /// @overload
    [[nodiscard]] Vector& translation() { return translation_; }

    /// The rotation, as it was handed in or came out of the last operation.
    [[nodiscard]] Quaternion const& rotation() const { return rotation_; }
    /// @overload
    [[nodiscard]] Quaternion& rotation() { return rotation_; }

    /// The flag as it was handed in or came out of the last operation.
    [[nodiscard]] bool valid() const { return valid_; }

    /// Whether all seven numbers are finite. The flag plays no part.
    [[nodiscard]] bool allFinite() const;

    /// The flat form of a pose: translation x, y, z, then rotation w, x, y, z.
    [[nodiscard]] std::array<T, 7> serialize() const;

    /// As a matrix transform. The flag is lost.
    [[nodiscard]] Transform3D ToEigen() const;

    /// The part of the transform that lies in the xy plane: yaw, x and y. The height and the tilt are
    /// dropped.
    [[nodiscard]] Transform2D Project2D() const;

    /// The transform that undoes this one.
    ///
    /// Callers may rely on the result being valid() whatever this transform's flag says: inverting a
    /// transform that is not valid gives numbers without a meaning behind a flag that is set, so test the
    /// operand first.
    [[nodiscard]] TrafoT inverse() const;

    /// The pose at the fraction from this one (0) to `other` (1): linear in translation, spherical along the
    /// shorter arc in rotation. Fractions outside 0 to 1 extrapolate. The rotation is not normalised; for
    /// nearly equal rotations the spherical weights give way to linear ones, which leaves it slightly short.
    ///
    /// Callers may rely on the result being valid() whatever the operands' flags say: test the operands
    /// first.
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

    /// isApprox() with precision 1e-12, hence not transitive.
    [[nodiscard]] bool operator==(TrafoT const& other) const { return isApprox(other, 1e-12); }
    [[nodiscard]] bool operator!=(TrafoT const& other) const { return !(*this == other); }

    /// The composition: `(a * b)` applied to a point is `a` applied to `b` applied to the point. Valid if
    /// both are.
    [[nodiscard]] TrafoT operator*(TrafoT const& other) const;

    /// The image of a point.
    [[nodiscard]] Vector operator*(Vector const& point) const;

private:
    Vector translation_;
    Quaternion rotation_;
    bool valid_;
};

extern template class ROAMSCAN_EXPORT TrafoT<float>;
extern template class ROAMSCAN_EXPORT TrafoT<double>;

} // namespace oV::Roamscan
