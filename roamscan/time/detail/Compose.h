#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/RotateVector.h>

namespace oV::Roamscan::detail
{

/// The composition of two transforms, as TrafoT::operator* returns it. Inline, so that loops over many poses
/// can keep intermediate results in registers.
template <typename T>
[[nodiscard]] inline TrafoT<T> compose(TrafoT<T> const& a, TrafoT<T> const& b)
{
    using Vector = typename TrafoT<T>::Vector;
    return TrafoT<T>(Vector(a.translation() + rotateVector<T>(a.rotation(), b.translation())),
                     a.rotation() * b.rotation(),
                     a.valid() && b.valid());
}

} // namespace oV::Roamscan::detail
