#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/Compose.h>
#include <roamscan/time/detail/Interpolate.h>
#include <roamscan/time/detail/NearestRotation.h>
#include <roamscan/time/detail/RotateVector.h>
#include <roamscan/time/detail/SquaredLength.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace oV::Roamscan
{

namespace
{

// A number from std::rand, reduced to its upper 15 bits where the platform returns more.
template <typename T>
T draw15Bits()
{
    constexpr int surplusBits = std::bit_width(static_cast<unsigned>(RAND_MAX)) - 15;
    static_assert(surplusBits >= 0);
    return static_cast<T>(std::rand() >> surplusBits);
}

} // namespace

template <typename T>
TrafoT<T>::TrafoT(Bv_1_1::Mat4d<T> const& matrix, bool valid)
    : TrafoT(Vector(matrix[12], matrix[13], matrix[14]),
             Quaternion(detail::nearestRotation<T, 3>(
                 Eigen::Map<Eigen::Matrix<T, 4, 4> const>(matrix.data()).template topLeftCorner<3, 3>())),
             valid)
{}

template <typename T>
TrafoT<T> TrafoT<T>::FromEigen(Transform3D const& transform)
{
    Eigen::Matrix<T, 3, 3> const block = transform.linear();
    return TrafoT(Vector(transform.translation()), Quaternion(detail::nearestRotation<T, 3>(block)), true);
}

template <typename T>
TrafoT<T> TrafoT<T>::Embed3D(Transform2D const& transform)
{
    Eigen::Matrix<T, 2, 2> const block = transform.linear();
    Eigen::Matrix<T, 2, 2> const rotation = detail::nearestRotation<T, 2>(block);
    T const halfYaw = std::atan2(rotation(1, 0), rotation(0, 0)) * T(0.5);
    T const sine = std::sin(halfYaw);
    return TrafoT(Vector(transform.translation().x(), transform.translation().y(), T(0)),
                  Quaternion(std::cos(halfYaw), T(0) * sine, T(0) * sine, sine),
                  true);
}

template <typename T>
TrafoT<T> TrafoT<T>::Random()
{
    constexpr auto toSymmetricUnit = static_cast<T>(6.103701895199438e-05); // 2 / 32767
    constexpr auto toUnit = static_cast<T>(3.051850947599719e-05);          // 1 / 32767
    constexpr auto toTurn = static_cast<T>(0.00019175345033660654);         // 2 pi / 32767

    T const x = draw15Bits<T>() * toSymmetricUnit - T(1);
    T const y = draw15Bits<T>() * toSymmetricUnit - T(1);
    T const z = draw15Bits<T>() * toSymmetricUnit - T(1);
    T const u1 = draw15Bits<T>() * toUnit;
    T const u2 = draw15Bits<T>() * toTurn;
    T const u3 = draw15Bits<T>() * toTurn;
    T const a = std::sqrt(T(1) - u1);
    T const b = std::sqrt(u1);
    return TrafoT(Vector(x, y, z),
                  Quaternion(a * std::sin(u2), a * std::cos(u2), b * std::sin(u3), b * std::cos(u3)),
                  true);
}

template <typename T>
bool TrafoT<T>::allFinite() const
{
    return translation_.allFinite() && rotation_.coeffs().allFinite();
}

template <typename T>
std::array<T, 7> TrafoT<T>::serialize() const
{
    return {translation_.x(),
            translation_.y(),
            translation_.z(),
            rotation_.w(),
            rotation_.x(),
            rotation_.y(),
            rotation_.z()};
}

template <typename T>
typename TrafoT<T>::Transform3D TrafoT<T>::ToEigen() const
{
    Transform3D result;
    result.linear() = rotation_.toRotationMatrix();
    result.translation() = translation_;
    result.makeAffine();
    return result;
}

template <typename T>
typename TrafoT<T>::Transform2D TrafoT<T>::Project2D() const
{
    Vector const heading = detail::rotateVector<T>(rotation_, Vector::UnitX());
    T const yaw = std::atan2(heading.y(), heading.x());
    T const cosine = std::cos(yaw);
    T const sine = std::sin(yaw);
    Transform2D result;
    result.linear() << cosine, -sine, sine, cosine;
    result.translation() = translation_.template head<2>();
    result.makeAffine();
    return result;
}

template <typename T>
TrafoT<T> TrafoT<T>::inverse() const
{
    Quaternion const back = rotation_.conjugate();
    return TrafoT(Vector(-detail::rotateVector<T>(back, translation_)), back, true);
}

template <typename T>
TrafoT<T> TrafoT<T>::interpolate(TrafoT const& other, double fraction) const
{
    return detail::interpolate(
        *this, other, detail::Slerp<T>(rotation_, other.rotation_), static_cast<T>(fraction));
}

template <typename T>
bool TrafoT<T>::isApprox(TrafoT const& other, double precision) const
{
    auto const narrowed = static_cast<T>(precision);
    T const squaredPrecision = narrowed * narrowed;

    // NaN makes a comparison false: a translation with NaN passes here, a rotation with NaN fails below.
    auto const ownLength = detail::squaredLength<T>(translation_);
    auto const othersLength = detail::squaredLength<T>(other.translation_);
    auto const shorter = detail::isLonger(ownLength, T(1), othersLength) ? othersLength : ownLength;
    if (detail::isLonger(
            detail::squaredDistance<T>(translation_, other.translation_), squaredPrecision, shorter)) {
        return false;
    }
    Eigen::Matrix<T, 3, 3> const own = rotation_.toRotationMatrix();
    Eigen::Matrix<T, 3, 3> const others = other.rotation_.toRotationMatrix();
    return squaredPrecision * std::min(own.squaredNorm(), others.squaredNorm()) >=
           (own - others).squaredNorm();
}

template <typename T>
TrafoT<T> TrafoT<T>::operator*(TrafoT const& other) const
{
    return detail::compose(*this, other);
}

template <typename T>
typename TrafoT<T>::Vector TrafoT<T>::operator*(Vector const& point) const
{
    return detail::rotateVector<T>(rotation_, point) + translation_;
}

template class ROAMSCAN_EXPORT_DEFINED_INSTANCE TrafoT<float>;
template class ROAMSCAN_EXPORT_DEFINED_INSTANCE TrafoT<double>;

} // namespace oV::Roamscan
