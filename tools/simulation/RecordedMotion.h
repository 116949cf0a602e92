#pragma once

#include "tools/simulation/Motion.h"

#include <roamscan/trajectory/TrajectoryNode.h>

#include <Eigen/Geometry>

#include <filesystem>
#include <vector>

namespace oV::Roamscan::tool
{

/// A motion along recorded poses: steady from each to the next, at rest before the first and after the last.
class RecordedMotion : public Motion
{
public:
    /// Puts the nodes in order of time; of two at the same time the later one counts.
    /// @throws ToolError, with `name` for the recording, if fewer than two different times remain, if a
    /// number is not finite, a rotation is none, or the recording is too wide or too long to be scanned
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
