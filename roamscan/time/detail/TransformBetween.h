#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/RotateVector.h>
#include <roamscan/time/detail/Slerp.h>

namespace oV::Roamscan::detail
{

/// The result of `interpolate(first, second, slerp, fraction) * point`, bit for bit.
///
/// Scalars, as in rotateVector().
template <typename T>
[[nodiscard]] inline typename TrafoT<T>::Vector transformBetween(TrafoT<T> const& first,
                                                                 TrafoT<T> const& second,
                                                                 Slerp<T> const& slerp,
                                                                 T fraction,
                                                                 typename TrafoT<T>::Vector const& point)
{
    // The interpolated rotation (u, w).
    auto const [firstWeight, secondWeight] = slerp.weightsAt(fraction);
    auto const& q0 = first.rotation();
    auto const& q1 = second.rotation();
    T const ux = firstWeight * q0.x() + secondWeight * q1.x();
    T const uy = firstWeight * q0.y() + secondWeight * q1.y();
    T const uz = firstWeight * q0.z() + secondWeight * q1.z();
    T const w = firstWeight * q0.w() + secondWeight * q1.w();

    typename TrafoT<T>::Vector const rotated = rotateVector<T>(ux, uy, uz, w, point);

    auto const& t0 = first.translation();
    auto const& t1 = second.translation();
    return {rotated.x() + ((t1.x() - t0.x()) * fraction + t0.x()),
            rotated.y() + ((t1.y() - t0.y()) * fraction + t0.y()),
            rotated.z() + ((t1.z() - t0.z()) * fraction + t0.z())};
}

} // namespace oV::Roamscan::detail
