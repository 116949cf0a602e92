#pragma once

#include <roamscan/frame/mapping/Vector3.h>

#include <array>
#include <cstdint>
#include <vector>

namespace mapping
{

/// Three 32-bit words that the recording software attaches to a point. This library never interprets them.
using PointAuxiliary = std::array<std::uint32_t, 3>;

/// One point of a range sensor's burst.
struct TimedRangefinderPoint
{
    Vector3<float> position; ///< The measured point.
    float time = 0;          ///< Time within the burst, in the recorder's unit; not interpreted.
    std::vector<PointAuxiliary> auxiliaries; ///< Further recorded values.

    [[nodiscard]] friend bool operator==(TimedRangefinderPoint const&,
                                         TimedRangefinderPoint const&) = default;
};

} // namespace mapping
