#include <roamscan/frame/values/LinearInterpolatedFunctionT.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace oV
{

template <typename T>
typename LinearInterpolatedFunctionT<T>::Position LinearInterpolatedFunctionT<T>::firstFrom(T x) const
{
    return std::lower_bound(samples_.begin(), samples_.end(), x, [](Sample const& sample, T position) {
        return sample.x < position;
    });
}

template <typename T>
void LinearInterpolatedFunctionT<T>::addSample(T const& x, T const& y)
{
    if (!std::isfinite(x)) {
        return;
    }
    if (samples_.empty() || samples_.back().x < x) {
        samples_.push_back({x, y});
        return;
    }
    auto const place = samples_.begin() + (firstFrom(x) - samples_.begin());
    if (place->x == x) {
        place->y = y;
    } else {
        samples_.insert(place, {x, y});
    }
}

template <typename T>
bool LinearInterpolatedFunctionT<T>::evaluateAt(T const& x, T& y) const
{
    auto const upper = firstFrom(x);
    if (upper == samples_.end()) {
        return false;
    }
    if (upper->x == x) {
        y = upper->y;
        return true;
    }
    if (upper == samples_.begin()) {
        return false; // also if x is NaN
    }
    auto const lower = std::prev(upper);
    if (lower->y == upper->y) {
        y = lower->y; // exact, where weights would round
        return true;
    }
    // Half the difference where the difference itself overflows. Halving would lose bits of subnormal
    // numbers.
    T const scale = std::isfinite(upper->x - lower->x) ? T(1) : T(0.5);
    T const fraction = (x * scale - lower->x * scale) / (upper->x * scale - lower->x * scale);
    // A weighted sum is monotonic in the values and preserves infinities.
    y = lower->y * (T(1) - fraction) + upper->y * fraction;
    return true;
}

template class ROAMSCAN_EXPORT_DEFINED_INSTANCE LinearInterpolatedFunctionT<double>;

} // namespace oV
