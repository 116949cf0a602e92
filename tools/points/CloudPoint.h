#pragma once

#include <cstdint>

namespace oV::Roamscan::tool
{

/// One point of a cloud or a scan.
struct CloudPoint
{
    float x = 0.0F; ///< Metres, as y and z.
    float y = 0.0F;
    float z = 0.0F;
    std::uint16_t intensity = 0;
    double time = 0.0; ///< Seconds; NaN for none.
};

} // namespace oV::Roamscan::tool
