#pragma once

#include <Eigen/Geometry>

namespace oV::Roamscan::tool
{

/// The longest motion that is simulated: a day, in seconds.
inline constexpr double longestSimulation = 86'400.0;

/// The true motion of a carried instrument. The body's x axis points forwards, y to the left, z up.
class Motion
{
public:
    Motion(double startTime, double stopTime) : startTime_(startTime), stopTime_(stopTime) {}
    Motion(Motion const&) = delete;
    Motion& operator=(Motion const&) = delete;
    virtual ~Motion() = default;

    [[nodiscard]] double startTime() const { return startTime_; } ///< Seconds.
    [[nodiscard]] double stopTime() const { return stopTime_; }

    /// The pose of the body (buildingFromBody). Also defined for a short time before the start and after the
    /// stop.
    [[nodiscard]] virtual Eigen::Isometry3d at(double time) const = 0;

private:
    double startTime_;
    double stopTime_;
};

} // namespace oV::Roamscan::tool
