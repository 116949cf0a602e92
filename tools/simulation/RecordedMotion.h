#pragma once

#include "tools/simulation/Motion.h"

#include <roamscan/trajectory/TrajectoryNode.h>

#include <Eigen/Geometry>

#include <filesystem>
#include <vector>

namespace oV::Roamscan::tool
{

/// A motion along recorded poses, at constant velocity between successive poses and at rest before the first
/// and after the last one.
class RecordedMotion : public Motion
{
public:
    /// The nodes may be in any order; of several at the same time the last one counts.
    /// @throws ToolError, with `name` for the recording, if there are fewer than two different times, a
    /// number is not finite, a quaternion is not of unit length, or the recording is too large or too long
    RecordedMotion(std::vector<TrajectoryNode> const& nodes, std::filesystem::path const& name);

    [[nodiscard]] double startTime() const override;
    [[nodiscard]] double stopTime() const override;
    [[nodiscard]] Eigen::Isometry3d at(double time) const override;

    [[nodiscard]] std::vector<double> const& times() const
    {
        return times_;
    } ///< Of the recorded poses, rising.
    [[nodiscard]] std::vector<Eigen::Vector3d> const& positions() const
    {
        return positions_;
    } ///< At these times.

private:
    std::vector<double> times_;
    std::vector<Eigen::Vector3d> positions_;
    std::vector<Eigen::Quaterniond> rotations_;
};

} // namespace oV::Roamscan::tool
