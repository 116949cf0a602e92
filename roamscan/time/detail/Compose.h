#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/RotateVector.h>

namespace oV::Roamscan::detail
{

/// What TrafoT::operator* gives, for loops over many poses: in line, so that the result of one product need
/// not go through memory on its way into the next.
template <typename T>
[[nodiscard]] inline TrafoT<T> compose(TrafoT<T> const& a, TrafoT<T> const& b)
{
    using Vector = typename TrafoT<T>::Vector;
    return TrafoT<T>(Vector(a.translation() + rotateVector<T>(a.rotation(), b.translation())),
                     a.rotation() * b.rotation(),
                     a.valid() && b.valid());
}

} // namespace oV::Roamscan::detail
