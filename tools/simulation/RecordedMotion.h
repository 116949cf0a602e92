#pragma once

#include "tools/motion/TimedPose.h"
#include "tools/simulation/Motion.h"

#include <roamscan/trajectory/TrajectoryNode.h>

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

    [[nodiscard]] Eigen::Isometry3d at(double time) const override;

    /// The recorded poses in order of time.
    [[nodiscard]] std::vector<TimedPose> const& poses() const { return poses_; }

private:
    explicit RecordedMotion(std::vector<TimedPose> poses);

    std::vector<TimedPose> poses_;
};

} // namespace oV::Roamscan::tool
