#pragma once

#include <roamscan/frame/platform/Export.h>

#include <vector>

namespace oV
{

/// A piecewise linear function of one variable, defined by samples. Its domain is the closed interval from
/// the smallest to the largest x of the samples.
///
/// Samples may be added in any order; ascending order of x is fastest. Concurrent evaluation is safe. Adding
/// a sample needs exclusive access. `T` is `double`.
template <typename T>
class LinearInterpolatedFunctionT
{
public:
    /// Adds the sample (x, y). It replaces an earlier sample at the same x. A sample is ignored if its x is
    /// infinite or NaN; y may have any value.
    void addSample(T const& x, T const& y);

    /// Evaluates the function at x by linear interpolation between the two neighbouring samples. At the x of
    /// a sample the result is exactly its y. If the y of a neighbour is NaN, the result is NaN.
    /// @param x where to evaluate
    /// @param[out] y the value; unchanged if the function returns false
    /// @return false if x is NaN or outside the domain, which is empty without samples
    [[nodiscard]] bool evaluateAt(T const& x, T& y) const;

private:
    struct Sample
    {
        T x;
        T y;
    };
    using Position = typename std::vector<Sample>::const_iterator;

    // The first sample at or after x.
    [[nodiscard]] ROAMSCAN_NO_EXPORT Position firstFrom(T x) const;

    std::vector<Sample> samples_; // in ascending order of x, each x once
};

#if ROAMSCAN_DECLARES_INSTANCES
extern template class ROAMSCAN_EXPORT_DECLARED_INSTANCE LinearInterpolatedFunctionT<double>;
#endif

} // namespace oV
