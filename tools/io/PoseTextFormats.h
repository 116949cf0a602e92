#pragma once

#include "tools/io/PoseFormat.h"

#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <vector>

/// Readers of poses in the text formats of trajectory evaluation tools. Blank lines and lines that begin with
/// '#' are skipped. Quaternions of unit length up to rounding are kept bit for bit; others are normalized,
/// unless their norm differs from 1 by more than a tenth. Matrices are replaced by the nearest rotation,
/// unless their rows are not of unit length and at right angles up to a hundredth. Every function throws a
/// ToolError of the form "FILE:LINE: why" for a line that cannot be parsed, with `name` for FILE.
namespace oV::Roamscan::tool
{

/// Times in seconds.
struct TextTimes
{
    std::vector<double> times;
    std::vector<std::uint64_t> lines; ///< The line of each time, from 1.
};

/// Poses in the order of the text.
struct TextPoses
{
    std::vector<TrajectoryNode> nodes;
    std::vector<std::uint64_t> lines; ///< The line of each pose, from 1.
};

/// Reads a format that has the times in it: all but KITTI.
/// @throws ToolError also if there is no pose, or there are more than largestNodeCount
[[nodiscard]] TextPoses readPoses(PoseFormat format, std::istream& text, std::filesystem::path const& name);

/// Reads KITTI poses: each pose takes the time at its index.
/// @throws ToolError also if there is no pose, or there are more than largestNodeCount, or more or fewer than
/// times
[[nodiscard]] TextPoses readKittiPoses(std::istream& text,
                                       std::filesystem::path const& name,
                                       std::vector<double> const& times,
                                       std::filesystem::path const& timesName);

/// Reads one time in seconds per line.
/// @throws ToolError also if there are more than 100 million
[[nodiscard]] TextTimes readTimes(std::istream& text, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
