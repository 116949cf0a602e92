#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/time/detail/Slerp.h>

namespace oV::Roamscan::detail
{

/// The result of `interpolate(first, second, slerp, fraction) * point`, bit for bit.
///
/// Everything is a scalar, which the compiler keeps in registers. Eigen's vectors would be stored in parts
/// and loaded as a whole at once, and the processor would have to wait for these stores.
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

    // rotateVector(): c = 2 (u x p), p' = p + w c + u x c
    T const px = point.x();
    T const py = point.y();
    T const pz = point.z();
    T const cx = T(2) * (uy * pz - uz * py);
    T const cy = T(2) * (uz * px - ux * pz);
    T const cz = T(2) * (ux * py - uy * px);
    T const x = (px + w * cx) + (uy * cz - uz * cy);
    T const y = (py + w * cy) + (uz * cx - ux * cz);
    T const z = (pz + w * cz) + (ux * cy - uy * cx);

    auto const& t0 = first.translation();
    auto const& t1 = second.translation();
    return {x + ((t1.x() - t0.x()) * fraction + t0.x()),
            y + ((t1.y() - t0.y()) * fraction + t0.y()),
            z + ((t1.z() - t0.z()) * fraction + t0.z())};
}

} // namespace oV::Roamscan::detail
