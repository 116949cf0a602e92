#pragma once

#include <opencv2/core/matx.hpp>

#include <cstdint>

namespace oV::Roamscan::tool
{

/// Blue, green and red, the order of OpenCV's pictures, 0 to 1 each.
using Colour = cv::Vec3f;

/// A colour in web notation: 0xRRGGBB.
[[nodiscard]] inline Colour colourOf(std::uint32_t hex)
{
    auto const part = [&](unsigned shift) { return static_cast<float>((hex >> shift) & 0xFFU) / 255.0F; };
    return {part(0), part(8), part(16)};
}

} // namespace oV::Roamscan::tool
