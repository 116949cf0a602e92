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
    picture.forEach([&](cv::Vec3b& pixel, int const* at) {
        Colour colour = white + std::min(ground(at) / fullGround, 1.0F) * (pale - white);
        colour += std::min(std::log1p(standing(at)) / fullWall, 1.0F) * (dark - colour);
        pixel = 255.0F * colour;
    });
    return picture;
}

/// Draws lines and text with smooth edges: on an enlarged copy of the picture, which is averaged afterwards.
class Pen
{
public:
    explicit Pen(cv::Mat3b const& picture)
    {
        cv::resize(picture, enlarged_, {}, enlargement, enlargement, cv::INTER_NEAREST);
    }

    void rectangle(Vector2d const& topLeft, Vector2d const& size, Colour const& colour)
    {
        enlarged_(cv::Rect(pixelAt(topLeft), pixelAt(topLeft + size))).setTo(ink(colour));
    }

    void disc(Vector2d const& centre, double radius, Colour const& colour)
    {
        cv::circle(enlarged_, pixelAt(centre), cvRound(enlargement * radius), ink(colour), cv::FILLED);
    }

    void line(std::vector<Vector2d> const& places, double thickness, Colour const& colour)
    {
        std::vector<cv::Point> points(places.size());
        std::ranges::transform(places, points.begin(), pixelAt);
        cv::polylines(enlarged_, points, false, ink(colour), cvRound(enlargement * thickness));
    }

    /// The extent of a text in pixels.
    [[nodiscard]] static Vector2d textSize(std::string const& text)
    {
        cv::Size const size = cv::getTextSize(text, font, fontScale, 1, nullptr);
        return Vector2d(size.width, size.height) / enlargement;
    }

    void text(std::string const& text, Vector2d const& bottomLeft, double thickness, Colour const& colour)
    {
        int const stroke = cvRound(enlargement * thickness);
        cv::putText(enlarged_, text, pixelAt(bottomLeft), font, fontScale, ink(colour), stroke);
    }

    [[nodiscard]] cv::Mat3b smoothed() const
    {
        cv::Mat3b picture;
        cv::resize(enlarged_, picture, enlarged_.size() / enlargement, 0.0, 0.0, cv::INTER_AREA);
        return picture;
    }

private:
    static constexpr int enlargement = 4;
    static constexpr int font = cv::FONT_HERSHEY_SIMPLEX;
    static constexpr double fontScale = enlargement; // capital letters are some 21 pixels high

    static cv::Scalar ink(Colour const& colour) { return 255.0F * colour; }

    /// In the enlarged picture.
    static cv::Point pixelAt(Vector2d const& place)
    {
        return {cvRound(enlargement * place.x()), cvRound(enlargement * place.y())};
    }

    cv::Mat3b enlarged_;
};

void drawPath(Pen& pen, PlanView const& view, std::vector<Vector2f> const& path)
{
    if (path.empty()) {
        return;
    }
    std::vector<Vector2d> line;
    for (Vector2f const& place : path) {
        Vector2d const pixel = view(place);
        if (line.empty() || (pixel - line.back()).norm() >= 0.5) {
            line.push_back(pixel);
        }
    }
    pen.line(line, 3.5, colourOf(0xE8590C));

    struct End
    {
        Vector2d place;
        std::string label;
        Colour colour;
        double radius;
        bool labelLeft;
    };
    // The sizes differ so that both are visible at the same place.
    for (End const& end : {End{view(path.front()), "start", colourOf(0x1B8A3A), 11.0, true},
                           End{view(path.back()), "end", colourOf(0xC2185B), 6.0, false}})
    {
        pen.disc(end.place, end.radius + 2.0, colourOf(0xFFFFFF));
        pen.disc(end.place, end.radius, end.colour);
        Vector2d const size = Pen::textSize(end.label);
        double const left = end.labelLeft ? end.place.x() - 19.0 - size.x() : end.place.x() + 19.0;
        Vector2d const corner(std::clamp(left, 4.0, view.size.width - size.x() - 4.0),
                              end.place.y() + size.y() / 2.0);
        pen.text(end.label, corner, 7.0, colourOf(0xFFFFFF)); // a rim, to be legible on any background
        pen.text(end.label, corner, 2.5, end.colour);
    }
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

void drawScaleBar(Pen& pen, PlanView const& view)
{
    Colour const ink = colourOf(0x222222);
    double const metres = roundLength(0.25 * view.size.width / view.pixelsPerMetre);
    double const length = metres * view.pixelsPerMetre;
    double const bottom = view.size.height - 20.0;
    pen.rectangle({border, bottom - 4.0}, {length, 4.0}, ink);
    pen.rectangle({border, bottom - 16.0}, {3.0, 16.0}, ink);
    pen.rectangle({border + length - 3.0, bottom - 16.0}, {3.0, 16.0}, ink);
    pen.text(lengthLabel(metres), {border + length + 14.0, bottom}, 2.5, ink);
}

} // namespace

cv::Mat3b drawTopView(TopViewScene const& scene)
{
    PlanView const view(scene);
    Pen pen(shadePoints(view, scene.points));
    drawPath(pen, view, scene.path);
    drawScaleBar(pen, view);
    return pen.smoothed();
}

} // namespace oV::Roamscan::tool
