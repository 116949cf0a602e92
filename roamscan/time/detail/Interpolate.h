#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/Slerp.h>

namespace oV::Roamscan::detail
{

/// The result of TrafoT::interpolate(), with the slerp of the two poses prepared in advance.
/// @param slerp of the rotations of the two poses
template <typename T>
[[nodiscard]] inline TrafoT<T>
interpolate(TrafoT<T> const& first, TrafoT<T> const& second, Slerp<T> const& slerp, T fraction)
{
    using Vector = typename TrafoT<T>::Vector;
    return TrafoT<T>(Vector((second.translation() - first.translation()) * fraction + first.translation()),
                     slerp.at(fraction, first.rotation(), second.rotation()),
                     true);
}

} // namespace oV::Roamscan::detail
