#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <filesystem>
#include <iosfwd>
#include <vector>

/// Poses in the text formats of trajectory evaluation tools. Blank lines and lines that begin with '#' are
/// skipped. Quaternions are normalized and rotation matrices are replaced by the nearest rotation, unless
/// their norm or determinant differs from 1 by more than a tenth. Every function throws a ToolError of the
/// form "FILE:LINE: why" for a line that cannot be parsed, with `name` for FILE, and refuses a text without a
/// pose or with more than largestNodeCount poses.
namespace oV::Roamscan::tool
{

/// TUM: `t tx ty tz qx qy qz qw`, in seconds and metres, separated by blanks.
[[nodiscard]] std::vector<TrajectoryNode> readTumPoses(std::istream& text, std::filesystem::path const& name);

/// EuRoC: `t,px,py,pz,qw,qx,qy,qz` with the time in integer nanoseconds; further columns are ignored.
[[nodiscard]] std::vector<TrajectoryNode> readEurocPoses(std::istream& text,
                                                         std::filesystem::path const& name);

/// KITTI: the twelve numbers of a 3x4 matrix [R t], row by row. The format has no times: each pose
/// takes the time at its index in `times`.
/// @throws ToolError also if there are more or fewer poses than times
[[nodiscard]] std::vector<TrajectoryNode> readKittiPoses(std::istream& text,
                                                         std::filesystem::path const& name,
                                                         std::vector<double> const& times,
                                                         std::filesystem::path const& timesName);

/// One time in seconds per line.
[[nodiscard]] std::vector<double> readTimes(std::istream& text, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
