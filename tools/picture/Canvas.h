#pragma once

#include <Eigen/Core>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace oV::Roamscan::tool
{

/// Red, green and blue, 0 to 1 each.
using Colour = Eigen::Vector3f;

/// A colour as on the web: 0xRRGGBB.
[[nodiscard]] Colour colourOf(std::uint32_t hex);

/// A picture to draw on. Coordinates are pixels, x to the right and y down; a pixel's centre lies at half
/// numbers. What lies outside the picture is left out.
class Canvas
{
public:
    Canvas(int width, int height, Colour const& background);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] Colour const& at(int x, int y) const { return pixels_[index(x, y)]; }

    /// Lays a colour over a pixel; `cover` 0 leaves the pixel, 1 replaces it.
    void blend(int x, int y, Colour const& colour, float cover);

    void drawRectangle(Eigen::Vector2f const& topLeft, Eigen::Vector2f const& size, Colour const& colour);
    void drawDisc(Eigen::Vector2f const& centre, float radius, Colour const& colour);

    /// A line through all points, with round joints and smooth edges.
    void drawLine(std::span<Eigen::Vector2f const> points, float thickness, Colour const& colour);

    /// Three bytes a pixel, row by row from the top.
    [[nodiscard]] std::vector<std::uint8_t> toBytes() const;

private:
    [[nodiscard]] std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<Colour> pixels_;
};

} // namespace oV::Roamscan::tool
