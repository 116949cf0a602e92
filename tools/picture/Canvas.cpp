#include "tools/picture/Canvas.h"

#include <algorithm>
#include <cmath>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector2f;

/// How much of a pixel a shape covers whose edge is this far from the pixel's centre, inwards.
float coverAt(float inside)
{
    return std::clamp(inside + 0.5F, 0.0F, 1.0F);
}

float distanceToSegment(Vector2f const& point, Vector2f const& from, Vector2f const& to)
{
    Vector2f const edge = to - from;
    float const length = edge.squaredNorm();
    float const along = length > 0.0F ? std::clamp(edge.dot(point - from) / length, 0.0F, 1.0F) : 0.0F;
    return (point - from - along * edge).norm();
}

/// A pixel's number from a coordinate that may lie far outside the picture.
int pixelOf(float coordinate, int count)
{
    return static_cast<int>(std::clamp(std::floor(coordinate), -1.0F, static_cast<float>(count)));
}

} // namespace

Colour colourOf(std::uint32_t hex)
{
    auto const part = [&](unsigned shift) { return static_cast<float>((hex >> shift) & 0xFFU) / 255.0F; };
    return {part(16), part(8), part(0)};
}

Canvas::Canvas(int width, int height, Colour const& background)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), background)
{}

void Canvas::blend(int x, int y, Colour const& colour, float cover)
{
    if (x >= 0 && y >= 0 && x < width_ && y < height_) {
        Colour& pixel = pixels_[index(x, y)];
        pixel += cover * (colour - pixel);
    }
}

void Canvas::drawRectangle(Vector2f const& topLeft, Vector2f const& size, Colour const& colour)
{
    Vector2f const end = topLeft + size;
    for (int y = pixelOf(topLeft.y(), height_); y <= pixelOf(end.y(), height_); ++y) {
        for (int x = pixelOf(topLeft.x(), width_); x <= pixelOf(end.x(), width_); ++x) {
            Vector2f const centre(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
            float const inside = std::min((centre - topLeft).minCoeff(), (end - centre).minCoeff());
            blend(x, y, colour, coverAt(inside));
        }
    }
}

void Canvas::drawDisc(Vector2f const& centre, float radius, Colour const& colour)
{
    drawLine(std::span(&centre, 1), 2.0F * radius, colour);
}

void Canvas::drawLine(std::span<Vector2f const> points, float thickness, Colour const& colour)
{
    // Covers are gathered before anything is painted: segments overlap, and what is smooth must not be
    // painted twice.
    std::vector<float> covers(pixels_.size(), 0.0F);
    float const reach = thickness / 2.0F + 1.0F;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Vector2f const& from = points[i];
        Vector2f const& to = points[std::min(i + 1, points.size() - 1)];
        Vector2f const low = from.cwiseMin(to).array() - reach;
        Vector2f const high = from.cwiseMax(to).array() + reach;
        for (int y = std::max(pixelOf(low.y(), height_), 0); y < pixelOf(high.y() + 1.0F, height_); ++y) {
            for (int x = std::max(pixelOf(low.x(), width_), 0); x < pixelOf(high.x() + 1.0F, width_); ++x) {
                Vector2f const centre(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
                float const inside = thickness / 2.0F - distanceToSegment(centre, from, to);
                float& cover = covers[index(x, y)];
                cover = std::max(cover, coverAt(inside));
            }
        }
    }
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            blend(x, y, colour, covers[index(x, y)]);
        }
    }
}

std::vector<std::uint8_t> Canvas::toBytes() const
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(3 * pixels_.size());
    for (Colour const& pixel : pixels_) {
        for (float const part : pixel) {
            bytes.push_back(static_cast<std::uint8_t>(std::lround(255.0F * std::clamp(part, 0.0F, 1.0F))));
        }
    }
    return bytes;
}

} // namespace oV::Roamscan::tool
