#pragma once

#include <Eigen/Core>

#include <cstddef>
#include <vector>

namespace oV::Roamscan::tool
{

/// From the lowest to the highest of some values.
struct Interval
{
    float low = 0.0F;
    float high = 0.0F;
};

/// The interval of the values without the given share of them at either end, so that a few stray ones change
/// nothing.
[[nodiscard]] Interval mostOf(std::vector<float> values, double share);

/// How many points fell into each pixel of a picture.
class Density
{
public:
    Density(int width, int height);

    /// Shares a point out among the four pixels around it.
    void add(Eigen::Vector2f const& place);

    /// Spreads every value over a square, so that single points become an area.
    void blur(int radius);

    /// Gives every pixel the highest value of itself and the four beside it, so that lines become three
    /// pixels wide.
    void widen();

    [[nodiscard]] float at(int x, int y) const { return values_[index(x, y)]; }

    /// The value that all but a share of the pixels with something in them stay below; at least 1.
    [[nodiscard]] float nearlyHighest() const;

private:
    [[nodiscard]] std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }

    /// One pass over lines of pixels that lie `step` apart, the lines `lineStep`.
    void blurAlong(int radius, int length, int lines, int step, int lineStep);

    int width_;
    int height_;
    std::vector<float> values_;
};

} // namespace oV::Roamscan::tool
