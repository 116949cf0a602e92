#pragma once

#include <Eigen/Core>

#include <cmath>
#include <limits>

namespace oV::Roamscan::detail
{

/// The squared length of a vector as `significand * 4^exponent`, which neither underflows nor overflows.
///
/// The exponent is 0 unless the plain square is close to the limits of `T` or beyond them. The significand is
/// 0 only for the zero vector, infinite only with an infinite coefficient, and NaN with a NaN one.
template <typename T>
struct SquaredLength
{
    T significand;
    int exponent;
};

/// The squared length of `vector * 2^exponent`.
template <typename T>
[[nodiscard]] SquaredLength<T> squaredLength(Eigen::Matrix<T, 3, 1> const& vector, int exponent = 0)
{
    using Limits = std::numeric_limits<T>;
    // In this range, squares of coefficients that underflowed are too small to count.
    constexpr T smallestPlain = Limits::min() / (Limits::epsilon() * Limits::epsilon());
    constexpr T largestPlain = Limits::max() * Limits::epsilon();
    T const plain = vector.squaredNorm();
    if (plain >= smallestPlain && plain <= largestPlain) {
        return {plain, exponent};
    }
    // Beyond the exponents of all finite lengths, so that 0 and infinity compare by their exponents too.
    constexpr int extremeExponent = 8 * Limits::max_exponent;
    T const largest = vector.cwiseAbs().template maxCoeff<Eigen::PropagateNaN>();
    if (largest == T(0)) {
        return {T(0), -extremeExponent};
    }
    if (!std::isfinite(largest)) {
        return {plain, extremeExponent};
    }
    int const scale = std::ilogb(largest);
    Eigen::Matrix<T, 3, 1> const scaled =
        vector.unaryExpr([scale](T coefficient) { return std::scalbn(coefficient, -scale); });
    return {scaled.squaredNorm(), scale + exponent};
}

/// The squared length of `a - b`, also where the difference overflows.
template <typename T>
[[nodiscard]] SquaredLength<T> squaredDistance(Eigen::Matrix<T, 3, 1> const& a,
                                               Eigen::Matrix<T, 3, 1> const& b)
{
    Eigen::Matrix<T, 3, 1> const difference = a - b;
    if (!difference.allFinite() && a.allFinite() && b.allFinite()) {
        return squaredLength<T>(a / T(2) - b / T(2), 1);
    }
    return squaredLength<T>(difference);
}

/// Whether `a > factor * b`. A NaN makes it false.
template <typename T>
[[nodiscard]] bool isLonger(SquaredLength<T> const& a, T factor, SquaredLength<T> const& b)
{
    // Where the scaled factor underflows or overflows, one side is so much larger that rounding cannot change
    // the result.
    int const shift = 2 * (b.exponent - a.exponent);
    T const scaledFactor = shift == 0 ? factor : std::scalbn(factor, shift);
    return a.significand > scaledFactor * b.significand;
}

} // namespace oV::Roamscan::detail
