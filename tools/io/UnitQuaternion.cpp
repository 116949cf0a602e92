#include "tools/io/UnitQuaternion.h"

#include <cmath>
#include <limits>

namespace oV::Roamscan::tool
{

std::optional<Eigen::Quaterniond> unitQuaternion(Eigen::Quaterniond const& quaternion)
{
    constexpr double tolerance = 0.1;
    constexpr double rounding =
        8.0 * std::numeric_limits<double>::epsilon(); // of four squares and a division
    double const norm = quaternion.norm();
    if (!(std::abs(norm - 1.0) <= tolerance)) {
        return std::nullopt;
    }
    if (std::abs(quaternion.squaredNorm() - 1.0) <= rounding) {
        return quaternion;
    }
    return Eigen::Quaterniond(quaternion.coeffs() / norm);
}

} // namespace oV::Roamscan::tool
