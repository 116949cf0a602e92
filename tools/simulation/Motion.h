#pragma once

#include <Eigen/Geometry>

namespace oV::Roamscan::tool
{

/// Where a carried instrument really is at any time. The body's x points forwards, y to the left, z up.
class Motion
{
public:
    Motion() = default;
    Motion(Motion const&) = delete;
    Motion& operator=(Motion const&) = delete;
    virtual ~Motion() = default;

    [[nodiscard]] virtual double startTime() const = 0; ///< Seconds.
    [[nodiscard]] virtual double stopTime() const = 0;

    /// Body frame to the building's frame. Answers for some time before the start and after the stop, too.
    [[nodiscard]] virtual Eigen::Isometry3d at(double time) const = 0;
};

} // namespace oV::Roamscan::tool
