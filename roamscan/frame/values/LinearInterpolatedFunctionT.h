#pragma once

#include <roamscan/frame/platform/Export.h>

#include <vector>

namespace oV
{

/// A piecewise linear function of one variable, given by samples. It has values from the least sampled x to
/// the greatest, both included, and none outside.
///
/// Samples may come in any order; in ascending order of x they cost least. Many threads may evaluate; adding
/// needs the caller's own exclusion. `T` is `double`.
template <typename T>
class LinearInterpolatedFunctionT
{
public:
    /// The function y at x. A later sample at the same x takes the place of the earlier one. One whose x is
    /// infinite or NaN has no place on the axis and is left out; y may be anything.
    void addSample(T const& x, T const& y);

    /// Sets y to the value at x: a sample's own y at its x, whatever its neighbours are, and on the straight
    /// line between two samples elsewhere. A y that is NaN makes its neighbourhood NaN.
    /// @return false without a value at x (before the first sample, after the last one, at NaN, and
    /// everywhere if there is no sample); y is left alone then
    [[nodiscard]] bool evaluateAt(T const& x, T& y) const;

private:
    struct Sample
    {
        T x;
        T y;
    };
    using Position = typename std::vector<Sample>::const_iterator;

    /// The first sample at x or after it.
    [[nodiscard]] Position firstFrom(T x) const;

    std::vector<Sample> samples_; // in ascending order of x, each x once
};

extern template class ROAMSCAN_EXPORT LinearInterpolatedFunctionT<double>;

} // namespace oV
