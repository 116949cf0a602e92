#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace oV::Roamscan::tool
{

/// The text formats of poses. Lengths are in metres.
enum class PoseFormat : std::uint8_t
{
    Tum,   ///< `t tx ty tz qx qy qz qw`, in seconds, separated by blanks.
    Euroc, ///< `t,px,py,pz,qw,qx,qy,qz,...` with the time in integer nanoseconds.
    Kitti, ///< The twelve numbers of a 3x4 matrix [R t], row by row. The times are in a file of their own.
    Csv    ///< `time,x,y,z,qw,qx,qy,qz`, in seconds, with this header.
};

/// The first line of a CSV text of poses.
inline constexpr char const* csvPoseHeader = "time,x,y,z,qw,qx,qy,qz";

/// The names of the formats on the command line.
inline constexpr std::array<std::pair<std::string_view, PoseFormat>, 4> poseFormatNames{
    {{"tum", PoseFormat::Tum},
     {"euroc", PoseFormat::Euroc},
     {"kitti", PoseFormat::Kitti},
     {"csv", PoseFormat::Csv}}};

} // namespace oV::Roamscan::tool
