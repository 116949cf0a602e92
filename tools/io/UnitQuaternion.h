#pragma once

#include <Eigen/Geometry>

#include <optional>

namespace oV::Roamscan::tool
{

/// A quaternion from a text, normalized. One of unit length up to rounding stays as it is, so that reading
/// and writing keep its bits. Nothing if its norm differs from 1 by more than a tenth.
[[nodiscard]] std::optional<Eigen::Quaterniond> unitQuaternion(Eigen::Quaterniond const& quaternion);

} // namespace oV::Roamscan::tool
