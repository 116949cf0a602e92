#include "tools/picture/TopView.h"

#include "tools/console/Text.h"
#include "tools/picture/Colour.h"

#include <Eigen/Geometry>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector2d;
using Eigen::Vector2f;
using Eigen::Vector3f;

constexpr double longSide = 1200.0; // pixels
constexpr double shortestSide = 300.0;
constexpr double border = 36.0;
constexpr double scaleBand = 56.0; // below the plan, for the scale bar

struct Interval
{
    float low = 0.0F;
    float high = 0.0F;
};

/// The interval of the values without the given share at either end, to ignore outliers.
Interval withoutOutliers(std::vector<float> values, double share)
{
    if (values.empty()) {
        return {};
    }
    auto const sortedAt = [&](std::size_t index) {
        auto const place = values.begin() + static_cast<std::ptrdiff_t>(index);
        std::nth_element(values.begin(), place, values.end());
        return *place;
    };
    auto const cut = static_cast<std::size_t>(share * static_cast<double>(values.size()));
    return {sortedAt(cut), sortedAt(values.size() - 1 - cut)};
}

Interval withoutOutliers(std::vector<Vector3f> const& points, int axis, double share)
{
    std::vector<float> values(points.size());
    std::ranges::transform(points, values.begin(), [axis](Vector3f const& point) { return point[axis]; });
    return withoutOutliers(std::move(values), share);
}

/// Heights of walls: above the floor and what lies on it, below the ceiling and the tops of doors.
Interval wallHeights(std::vector<Vector3f> const& points)
{
    Interval const room = withoutOutliers(points, 2, 0.02);
    float const height = room.high - room.low;
    return {room.low + 0.22F * height, room.low + 0.70F * height};
}

/// From metres on the plan to pixels, x to the right and y down; a pixel's centre is at half numbers.
struct PlanView
{
    explicit PlanView(TopViewScene const& scene)
    {
        Eigen::AlignedBox2d bounds;
        for (Vector2f const& place : scene.path) {
            bounds.extend(place.cast<double>());
        }
        if (!scene.points.empty()) {
            Interval const x = withoutOutliers(scene.points, 0, 0.0005);
            Interval const y = withoutOutliers(scene.points, 1, 0.0005);
            bounds.extend(Vector2f(x.low, y.low).cast<double>());
            bounds.extend(Vector2f(x.high, y.high).cast<double>());
        }
        if (bounds.isEmpty()) {
            bounds.extend(Vector2d::Zero());
        }
        Vector2d const extent = bounds.sizes().cwiseMax(0.5);
        pixelsPerMetre = (longSide - 2.0 * border) / extent.maxCoeff();
        Eigen::Array2d const drawn = (pixelsPerMetre * extent.array() + 2.0 * border).max(shortestSide);
        size = {cvRound(drawn.x()), cvRound(drawn.y() + scaleBand)};
        centre = bounds.center();
        middle = drawn / 2.0;
    }

    [[nodiscard]] Vector2d operator()(Vector2f const& place) const
    {
        Vector2d const offset = pixelsPerMetre * (place.cast<double>() - centre);
        return {middle.x() + offset.x(), middle.y() - offset.y()};
    }

    double pixelsPerMetre = 1.0;
    cv::Size size;   // of the picture
    Vector2d middle; // of the plan, in the picture
    Vector2d centre; // of the plan, in metres
};

/// Distributes a point among the four pixels around it (bilinear weights).
void addPoint(cv::Mat1f& density, Vector2d const& place)
{
    Vector2d const corner = place.array() - 0.5;
    if (!(corner.minCoeff() >= 0.0 && corner.x() < density.cols - 1 && corner.y() < density.rows - 1)) {
        return;
    }
    int const x = static_cast<int>(corner.x());
    int const y = static_cast<int>(corner.y());
    auto const right = static_cast<float>(corner.x() - x);
    auto const down = static_cast<float>(corner.y() - y);
    density(y, x) += (1.0F - right) * (1.0F - down);
    density(y, x + 1) += right * (1.0F - down);
    density(y + 1, x) += (1.0F - right) * down;
    density(y + 1, x + 1) += right * down;
}

/// The 95th percentile of the pixels with something in them; at least 1.
float nearlyHighest(cv::Mat1f const& density)
{
    constexpr float something = 0.05F;
    std::vector<float> values(density.begin(), density.end());
    std::erase_if(values, [](float v) { return v <= something; });
    return std::max(withoutOutliers(std::move(values), 0.05).high, 1.0F);
}

cv::Mat3b shadePoints(PlanView const& view, std::vector<Vector3f> const& points)
{
    Interval const walls = wallHeights(points);
    cv::Mat1f standing(view.size, 0.0F);
    cv::Mat1f ground(view.size, 0.0F);
    for (Vector3f const& point : points) {
        bool const isWall = point.z() >= walls.low && point.z() <= walls.high;
        addPoint(isWall ? standing : ground, view(point.head<2>()));
    }
    for (int pass = 0; pass < 2; ++pass) { // single points become an area
        cv::blur(ground, ground, {9, 9}, {-1, -1}, cv::BORDER_CONSTANT);
    }
    // Walls become three pixels wide.
    cv::dilate(standing, standing, cv::getStructuringElement(cv::MORPH_CROSS, {3, 3}));

    Colour const white = colourOf(0xFFFFFF);
    Colour const pale = colourOf(0xDCE6EE);
    Colour const dark = colourOf(0x12304A);
    float const fullGround = nearlyHighest(ground) / 12.0F;
    float const fullWall = std::log1p(nearlyHighest(standing));
    cv::Mat3b picture(view.size);
    std::transform(ground.begin(),
                   ground.end(),
                   standing.begin(),
                   picture.begin(),
                   [&](float groundAt, float standingAt) -> cv::Vec3b {
                       Colour colour = white + std::min(groundAt / fullGround, 1.0F) * (pale - white);
                       colour += std::min(std::log1p(standingAt) / fullWall, 1.0F) * (dark - colour);
                       return 255.0F * colour;
                   });
    return picture;
}

constexpr int font = cv::FONT_HERSHEY_SIMPLEX;
constexpr double fontScale = 1.0; // capital letters are some 21 pixels high
constexpr int subpixelBits = 4;   // of the coordinates of smooth shapes
constexpr double subpixels = 1 << subpixelBits;

cv::Scalar ink(Colour const& colour)
{
    return 255.0F * colour;
}

/// In subpixels, counted from the centre of the first pixel.
cv::Point inSubpixels(Vector2d const& place)
{
    return {cvRound(subpixels * (place.x() - 0.5)), cvRound(subpixels * (place.y() - 0.5))};
}

void drawDisc(cv::Mat3b& picture, Vector2d const& centre, double radius, Colour const& colour)
{
    cv::circle(picture,
               inSubpixels(centre),
               cvRound(subpixels * radius),
               ink(colour),
               cv::FILLED,
               cv::LINE_AA,
               subpixelBits);
}

void drawText(
    cv::Mat3b& picture, std::string const& text, cv::Point bottomLeft, int thickness, Colour const& colour)
{
    cv::putText(picture, text, bottomLeft, font, fontScale, ink(colour), thickness, cv::LINE_AA);
}

/// Draws a disc with a label on one side of it.
void drawEnd(cv::Mat3b& picture,
             Vector2d const& place,
             std::string const& label,
             Colour const& colour,
             double radius,
             bool labelLeft)
{
    Colour const white = colourOf(0xFFFFFF);
    drawDisc(picture, place, radius + 2.0, white);
    drawDisc(picture, place, radius, colour);
    cv::Size const size = cv::getTextSize(label, font, fontScale, 1, nullptr);
    double const left = labelLeft ? place.x() - 19.0 - size.width : place.x() + 19.0;
    cv::Point const corner(cvRound(std::clamp(left, 4.0, picture.cols - size.width - 4.0)),
                           cvRound(place.y() + size.height / 2.0));
    drawText(picture, label, corner, 7, white); // a rim, to be legible on any background
    drawText(picture, label, corner, 2, colour);
}

void drawPath(cv::Mat3b& picture, PlanView const& view, std::vector<Vector2f> const& path)
{
    if (path.empty()) {
        return;
    }
    std::vector<cv::Point> line;
    for (Vector2f const& place : path) {
        cv::Point const point = inSubpixels(view(place));
        if (line.empty() || cv::norm(point - line.back()) >= subpixels / 2.0) {
            line.push_back(point);
        }
    }
    cv::polylines(picture, line, false, ink(colourOf(0xE8590C)), 3, cv::LINE_AA, subpixelBits);

    // The sizes differ so that both are visible at the same place.
    drawEnd(picture, view(path.front()), "start", colourOf(0x1B8A3A), 11.0, true);
    drawEnd(picture, view(path.back()), "end", colourOf(0xC2185B), 6.0, false);
}

/// The largest of 1, 2, 5, 10, 20, ... that is not larger than the length.
double roundLength(double length)
{
    double const power = std::pow(10.0, std::floor(std::log10(length)));
    return power * (5.0 * power <= length ? 5.0 : 2.0 * power <= length ? 2.0 : 1.0);
}

std::string lengthLabel(double metres)
{
    if (metres >= 1000.0) {
        return fixed(metres / 1000.0, 0) + " km";
    }
    return fixed(metres, metres < 1.0 ? 1 : 0) + " m";
}

void drawScaleBar(cv::Mat3b& picture, double pixelsPerMetre)
{
    Colour const dark = colourOf(0x222222);
    double const metres = roundLength(0.25 * picture.cols / pixelsPerMetre);
    int const length = cvRound(metres * pixelsPerMetre);
    int const left = cvRound(border);
    int const bottom = picture.rows - 20;
    for (cv::Rect const& bar : {cv::Rect(left, bottom - 4, length, 4),
                                cv::Rect(left, bottom - 16, 3, 16),
                                cv::Rect(left + length - 3, bottom - 16, 3, 16)})
    {
        picture(bar).setTo(ink(dark));
    }
    drawText(picture, lengthLabel(metres), {left + length + 14, bottom}, 2, dark);
}

} // namespace

cv::Mat3b drawTopView(TopViewScene const& scene)
{
    PlanView const view(scene);
    cv::Mat3b picture = shadePoints(view, scene.points);
    drawPath(picture, view, scene.path);
    drawScaleBar(picture, view.pixelsPerMetre);
    return picture;
}

} // namespace oV::Roamscan::tool
