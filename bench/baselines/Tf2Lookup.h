#pragma once

#include <array>
#include <functional>
#include <utility>
#include <vector>

namespace bench
{

/// Translation x, y, z, then rotation w, x, y, z.
using FlatPose = std::array<double, 7>;

/// Makes the lookup of a pose in a transform buffer of tf2 that discards none. The headers of tf2 do not
/// compile as C++20, so this header compiles as C++17 too.
/// @param poses  with their times in seconds, ascending, above 0
/// @return a function of the time in seconds, which tf2 rounds to whole nanoseconds; outside the times it
/// throws tf2::TransformException
[[nodiscard]] std::function<FlatPose(double)>
makeTf2Lookup(std::vector<std::pair<double, FlatPose>> const& poses);

} // namespace bench
