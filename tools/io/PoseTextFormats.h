#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <filesystem>
#include <iosfwd>
#include <vector>

/// Poses in the text formats that trajectory evaluation tools exchange. In all of them a line that does not
/// parse ends the reading with a ToolError of the form "FILE:LINE: why"; `name` stands for FILE. Blank lines
/// and lines that begin with '#' are skipped. Quaternions are brought to unit length, rotation matrices to
/// the nearest rotation; what is off by more than a tenth is refused. A text without a pose is refused, and
/// so is one with more than largestNodeCount.
namespace oV::Roamscan::tool
{

/// TUM: `t tx ty tz qx qy qz qw`, in seconds and metres, between blanks.
[[nodiscard]] std::vector<TrajectoryNode> readTumPoses(std::istream& text, std::filesystem::path const& name);

/// EuRoC: `t,px,py,pz,qw,qx,qy,qz` with the time in whole nanoseconds, and any further columns.
[[nodiscard]] std::vector<TrajectoryNode> readEurocPoses(std::istream& text,
                                                         std::filesystem::path const& name);

/// KITTI: the twelve numbers of a 3x4 matrix [R t], row by row. The format has no times: the pose in a line
/// takes the time of the same position in `times`.
/// @throws ToolError also if there are more or fewer poses than times
[[nodiscard]] std::vector<TrajectoryNode> readKittiPoses(std::istream& text,
                                                         std::filesystem::path const& name,
                                                         std::vector<double> const& times,
                                                         std::filesystem::path const& timesName);

/// One time in seconds in a line.
[[nodiscard]] std::vector<double> readTimes(std::istream& text, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
