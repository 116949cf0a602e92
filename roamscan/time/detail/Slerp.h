#pragma once

#include <Eigen/Geometry>

#include <cmath>
#include <limits>

namespace oV::Roamscan::detail
{

/// Spherical linear interpolation (slerp) between two rotations along the shorter arc. The constructor
/// computes the values that do not depend on the fraction: the angle and the inverse of its sine.
///
/// The result is not normalised. Nearly equal rotations are interpolated linearly.
template <typename T>
class Slerp
{
public:
    using Quaternion = Eigen::Quaternion<T>;

    Slerp(Quaternion const& first, Quaternion const& second)
    {
        T const dot = first.dot(second);
        T const cosine = std::abs(dot);
        isLongArc_ = !(dot >= T(0));
        isLinear_ = cosine >= T(1) - std::numeric_limits<T>::epsilon();
        if (!isLinear_) {
            angle_ = std::acos(cosine);
            inverseSine_ = T(1) / std::sin(angle_);
        }
    }

    /// The factors of `first` and `second`.
    struct Weights
    {
        T first;
        T second;
    };

    /// At a fraction from `first` (0) to `second` (1).
    [[nodiscard]] Weights weightsAt(T fraction) const
    {
        T firstWeight = T(1) - fraction;
        T secondWeight = fraction;
        if (!isLinear_) {
            firstWeight = std::sin((T(1) - fraction) * angle_) * inverseSine_;
            secondWeight = std::sin(fraction * angle_) * inverseSine_;
        }
        return {firstWeight, isLongArc_ ? -secondWeight : secondWeight};
    }

    /// The rotation at a fraction from `first` (0) to `second` (1), which are those of the constructor.
    [[nodiscard]] Quaternion at(T fraction, Quaternion const& first, Quaternion const& second) const
    {
        Weights const weights = weightsAt(fraction);
        return Quaternion(weights.first * first.coeffs() + weights.second * second.coeffs());
    }

private:
    T angle_ = T(0);
    T inverseSine_ = T(1);
    bool isLinear_ = false;
    bool isLongArc_ = false;
};

} // namespace oV::Roamscan::detail
