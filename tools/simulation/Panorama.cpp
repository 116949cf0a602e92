#include "tools/simulation/Panorama.h"

#include "tools/geometry/SurfacesInView.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

constexpr double pi = std::numbers::pi;
constexpr int blockSize = 16; // pixels, as rows and as columns

/// FNV-1a; unlike std::hash, the same on every machine.
std::uint32_t hashOf(std::string_view text)
{
    std::uint32_t hash = 2166136261U;
    for (char const c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return hash;
}

/// A colour of full brightness. Hues 0, 1/3 and 2/3 are red, green and blue.
Colour colourOfHue(float hue, float saturation)
{
    Colour colour;
    for (int channel = 0; channel < 3; ++channel) {
        float const turn = hue + static_cast<float>(channel + 1) / 3.0F;
        float const away = std::abs((turn - std::floor(turn)) - 0.5F); // 0.5 at the channel's own hue
        colour[channel] = 1.0F - saturation * (1.0F - std::clamp(6.0F * away - 1.0F, 0.0F, 1.0F));
    }
    return colour;
}

cv::Vec3b toPixel(Colour const& colour)
{
    auto const byte = [&](int channel) {
        return static_cast<std::uint8_t>(std::lround(255.0F * std::clamp(colour[channel], 0.0F, 1.0F)));
    };
    return {byte(0), byte(1), byte(2)};
}

} // namespace

Vector3d PanoramaCamera::direction(cv::Size size, double x, double y) const
{
    double const azimuth = heading + pi - 2.0 * pi * x / size.width;
    double const fromZenith = pi * y / size.height;
    Vector3d const inPlan(std::sin(fromZenith) * std::cos(azimuth),
                          std::sin(fromZenith) * std::sin(azimuth),
                          std::cos(fromZenith));
    return planFromBuilding.transpose() * inPlan;
}

Colour surfaceColour(std::string_view name)
{
    if (name == "floor") {
        return colourOf(0xE8CFAE); // wood
    }
    if (name == "ceiling") {
        return colourOf(0xF6F4EF);
    }
    constexpr float steps = 65536.0F;
    std::uint32_t const hash = hashOf(name);
    float const hue = static_cast<float>(hash >> 16) / steps;
    float const saturation = 0.2F + 0.25F * static_cast<float>(hash & 0xFFFFU) / steps;
    return colourOfHue(hue, saturation);
}

Colour shade(Surface const& surface, RayHit const& hit)
{
    constexpr double dimRange = 15.0; // metres, for half of the light
    double const facing = 0.55 + 0.45 * hit.cosIncidence;
    double const near = 1.0 / (1.0 + hit.range * hit.range / (dimRange * dimRange));
    double const light = (0.4 + 0.65 * surface.reflectance) * facing * near;
    return surfaceColour(surface.name) * static_cast<float>(light);
}

Colour emptiness()
{
    return colourOf(0x10141C);
}

cv::Mat takePanorama(PanoramaCamera const& camera, Building const& building, cv::Size size)
{
    SurfacesInView const inView(building, camera.position);
    // Bounds the angle to a corner: along the middle row, then along a column.
    double const halfAngle = blockSize * (pi / size.width + pi / size.height / 2.0);
    cv::Mat picture(size, CV_8UC3);
    for (int top = 0; top < size.height; top += blockSize) {
        for (int left = 0; left < size.width; left += blockSize) {
            double const half = blockSize / 2.0;
            Building const part = inView.within(camera.direction(size, left + half, top + half), halfAngle);
            for (int y = top; y < std::min(top + blockSize, size.height); ++y) {
                for (int x = left; x < std::min(left + blockSize, size.width); ++x) {
                    auto const hit = part.castRay(camera.position,
                                                  camera.direction(size, x + 0.5, y + 0.5),
                                                  std::numeric_limits<double>::infinity());
                    picture.at<cv::Vec3b>(y, x) =
                        toPixel(hit ? shade(part.surfaces[hit->surface], *hit) : emptiness());
                }
            }
        }
    }
    return picture;
}

} // namespace oV::Roamscan::tool
