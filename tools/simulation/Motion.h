#pragma once

#include <Eigen/Geometry>

namespace oV::Roamscan::tool
{

/// The true motion of a carried instrument. The body's x axis points forwards, y to the left, z up.
class Motion
{
public:
    Motion() = default;
    Motion(Motion const&) = delete;
    Motion& operator=(Motion const&) = delete;
    virtual ~Motion() = default;

    [[nodiscard]] virtual double startTime() const = 0; ///< Seconds.
    [[nodiscard]] virtual double stopTime() const = 0;

    /// The pose of the body (buildingFromBody). Also defined for a short time before the start and after the
    /// stop.
    [[nodiscard]] virtual Eigen::Isometry3d at(double time) const = 0;
};

} // namespace oV::Roamscan::tool
