#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/RotateVector.h>
#include <roamscan/time/detail/Slerp.h>

namespace oV::Roamscan::detail
{

/// Transforms points by poses between two given ones. Bit for bit, the result is
/// `interpolate(first, second, slerp, fraction) * point`.
///
/// Scalars, as in rotateVector().
template <typename T>
class TransformBetween
{
public:
    using Vector = typename TrafoT<T>::Vector;
    using Weights = typename Slerp<T>::Weights;

    TransformBetween(TrafoT<T> const& first, TrafoT<T> const& second)
        : firstRotation_(first.rotation()),
          secondRotation_(second.rotation()),
          translation_(first.translation()),
          difference_(second.translation() - first.translation())
    {}

    /// @param weights of the two rotations at the fraction
    [[nodiscard]] Vector operator()(T fraction, Weights const& weights, Vector const& point) const
    {
        auto const [a, b] = weights;
        auto const& q0 = firstRotation_;
        auto const& q1 = secondRotation_;
        Vector const rotated = rotateVector<T>(a * q0.x() + b * q1.x(),
                                               a * q0.y() + b * q1.y(),
                                               a * q0.z() + b * q1.z(),
                                               a * q0.w() + b * q1.w(),
                                               point);
        return {rotated.x() + (difference_.x() * fraction + translation_.x()),
                rotated.y() + (difference_.y() * fraction + translation_.y()),
                rotated.z() + (difference_.z() * fraction + translation_.z())};
    }

private:
    typename TrafoT<T>::Quaternion firstRotation_;
    typename TrafoT<T>::Quaternion secondRotation_;
    Vector translation_;
    Vector difference_;
};

} // namespace oV::Roamscan::detail
