#include "tools/picture/TopView.h"

#include "tools/console/Text.h"
#include "tools/picture/Density.h"
#include "tools/picture/Lettering.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector2f;
using Eigen::Vector3f;

constexpr float longSide = 1200.0F; // pixels
constexpr float shortestSide = 300.0F;
constexpr float border = 36.0F;
constexpr float scaleBand = 56.0F; // below the plan, for the scale
constexpr float letterDot = 3.0F;

Interval mostOfAxis(std::vector<Vector3f> const& points, int axis, double share)
{
    std::vector<float> values;
    values.reserve(points.size());
    for (Vector3f const& point : points) {
        values.push_back(point[axis]);
    }
    return mostOf(std::move(values), share);
}

/// Heights of walls: above the floor and what lies on it, below the ceiling and the tops of doors.
Interval wallHeights(std::vector<Vector3f> const& points)
{
    Interval const room = mostOfAxis(points, 2, 0.02);
    float const height = room.high - room.low;
    return {room.low + 0.22F * height, room.low + 0.70F * height};
}

/// From metres on the plan to pixels.
struct PlanView
{
    explicit PlanView(TopViewScene const& scene)
    {
        Eigen::AlignedBox2f bounds;
        for (Vector2f const& place : scene.path) {
            bounds.extend(place);
        }
        if (!scene.points.empty()) {
            Interval const x = mostOfAxis(scene.points, 0, 0.0005);
            Interval const y = mostOfAxis(scene.points, 1, 0.0005);
            bounds.extend(Vector2f(x.low, y.low));
            bounds.extend(Vector2f(x.high, y.high));
        }
        if (bounds.isEmpty()) {
            bounds.extend(Vector2f::Zero());
        }
        Vector2f const extent = bounds.sizes().cwiseMax(0.5F);
        pixelsPerMetre = (longSide - 2.0F * border) / extent.maxCoeff();
        Vector2f const drawn = pixelsPerMetre * extent;
        size = (drawn.array() + 2.0F * border).max(shortestSide);
        size.y() += scaleBand;
        centre = bounds.center();
        middle = {size.x() / 2.0F, (size.y() - scaleBand) / 2.0F};
    }

    [[nodiscard]] Vector2f operator()(Vector2f const& place) const
    {
        Vector2f const offset = pixelsPerMetre * (place - centre);
        return {middle.x() + offset.x(), middle.y() - offset.y()};
    }

    float pixelsPerMetre = 1.0F;
    Vector2f size;   // of the picture
    Vector2f middle; // of the plan, in the picture
    Vector2f centre; // of the plan, in metres
};

void shadePoints(Canvas& canvas, PlanView const& view, std::vector<Vector3f> const& points)
{
    Interval const walls = wallHeights(points);
    Density standing(canvas.width(), canvas.height());
    Density ground(canvas.width(), canvas.height());
    for (Vector3f const& point : points) {
        bool const isWall = point.z() >= walls.low && point.z() <= walls.high;
        (isWall ? standing : ground).add(view(point.head<2>()));
    }
    constexpr int blurRadius = 4;
    ground.blur(blurRadius);
    ground.blur(blurRadius);
    standing.widen();

    Colour const pale = colourOf(0xDCE6EE);
    Colour const dark = colourOf(0x12304A);
    float const fullGround = ground.nearlyHighest() / 12.0F;
    float const fullWall = std::log1p(standing.nearlyHighest());
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            canvas.blend(x, y, pale, std::min(ground.at(x, y) / fullGround, 1.0F));
            canvas.blend(x, y, dark, std::min(std::log1p(standing.at(x, y)) / fullWall, 1.0F));
        }
    }
}

/// A text with a bright rim, to be read on any ground.
void drawLabel(Canvas& canvas, std::string const& text, Vector2f const& topLeft, Colour const& colour)
{
    Vector2f const corner = topLeft.array().round(); // dots that fill pixels are the clearest
    for (int x = -1; x <= 1; ++x) {
        for (int y = -1; y <= 1; ++y) {
            Vector2f const shift(static_cast<float>(2 * x), static_cast<float>(2 * y));
            drawText(canvas, text, corner + shift, letterDot, colourOf(0xFFFFFF));
        }
    }
    drawText(canvas, text, corner, letterDot, colour);
}

void drawPath(Canvas& canvas, PlanView const& view, std::vector<Vector2f> const& path)
{
    if (path.empty()) {
        return;
    }
    std::vector<Vector2f> line;
    for (Vector2f const& place : path) {
        Vector2f const pixel = view(place);
        if (line.empty() || (pixel - line.back()).norm() >= 0.5F) {
            line.push_back(pixel);
        }
    }
    canvas.drawLine(line, 3.5F, colourOf(0xE8590C));

    struct End
    {
        Vector2f place;
        std::string label;
        Colour colour;
        float radius;
        bool labelLeft;
    };
    // Both are to be seen where they are the same place.
    for (End const& end : {End{view(path.front()), "start", colourOf(0x1B8A3A), 11.0F, true},
                           End{view(path.back()), "end", colourOf(0xC2185B), 6.0F, false}})
    {
        canvas.drawDisc(end.place, end.radius + 2.0F, colourOf(0xFFFFFF));
        canvas.drawDisc(end.place, end.radius, end.colour);
        Vector2f const size = textSize(end.label, letterDot);
        float const x = end.labelLeft ? end.place.x() - 19.0F - size.x() : end.place.x() + 19.0F;
        drawLabel(canvas,
                  end.label,
                  {std::clamp(x, 4.0F, static_cast<float>(canvas.width()) - size.x() - 4.0F),
                   end.place.y() - size.y() / 2.0F},
                  end.colour);
    }
}

/// The greatest of 1, 2, 5, 10, 20, ... that is not greater.
double roundLength(double length)
{
    double const power = std::pow(10.0, std::floor(std::log10(length)));
    for (double const step : {5.0, 2.0}) {
        if (step * power <= length) {
            return step * power;
        }
    }
    return power;
}

std::string lengthLabel(double metres)
{
    if (metres >= 1000.0) {
        return fixed(metres / 1000.0, 0) + " km";
    }
    return fixed(metres, metres < 1.0 ? 1 : 0) + " m";
}

void drawScale(Canvas& canvas, PlanView const& view)
{
    Colour const ink = colourOf(0x222222);
    double const metres = roundLength(0.25 * static_cast<double>(view.size.x() / view.pixelsPerMetre));
    float const length = static_cast<float>(metres) * view.pixelsPerMetre;
    float const left = border;
    float const bottom = view.size.y() - 20.0F;
    canvas.drawRectangle({left, bottom - 4.0F}, {length, 4.0F}, ink);
    canvas.drawRectangle({left, bottom - 16.0F}, {3.0F, 16.0F}, ink);
    canvas.drawRectangle({left + length - 3.0F, bottom - 16.0F}, {3.0F, 16.0F}, ink);
    std::string const label = lengthLabel(metres);
    drawText(canvas, label, {left + length + 14.0F, bottom - textSize(label, letterDot).y()}, letterDot, ink);
}

} // namespace

Canvas drawTopView(TopViewScene const& scene)
{
    PlanView const view(scene);
    Canvas canvas(static_cast<int>(std::lround(view.size.x())),
                  static_cast<int>(std::lround(view.size.y())),
                  colourOf(0xFFFFFF));
    shadePoints(canvas, view, scene.points);
    drawPath(canvas, view, scene.path);
    drawScale(canvas, view);
    return canvas;
}

} // namespace oV::Roamscan::tool
