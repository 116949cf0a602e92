#pragma once

#include <roamscan/frame/mapping/Vector3.h>

#include <array>
#include <cstdint>
#include <vector>

namespace mapping
{

/// Three 32-bit words that a recorder attaches to a point. They are carried along and never interpreted.
using PointAuxiliary = std::array<std::uint32_t, 3>;

/// One point of a range sensor's burst.
struct TimedRangefinderPoint
{
    Vector3<float> position;                 ///< The measured point.
    float time = 0;                          ///< Its time within the burst; apart from the time axis.
    std::vector<PointAuxiliary> auxiliaries; ///< What else was recorded with it.

    [[nodiscard]] friend bool operator==(TimedRangefinderPoint const&,
                                         TimedRangefinderPoint const&) = default;
};

} // namespace mapping
