#include "tools/picture/Density.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace oV::Roamscan::tool
{

Interval mostOf(std::vector<float> values, double share)
{
    if (values.empty()) {
        return {};
    }
    auto const cut = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size()));
    auto const low = values.begin() + cut;
    std::nth_element(values.begin(), low, values.end());
    Interval interval{*low, *low};
    auto const high = values.end() - 1 - cut;
    std::nth_element(values.begin(), high, values.end());
    interval.high = *high;
    return interval;
}

Density::Density(int width, int height)
    : width_(width),
      height_(height),
      values_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0.0F)
{}

void Density::add(Eigen::Vector2f const& place)
{
    Eigen::Vector2f const corner = place.array() - 0.5F;
    Eigen::Vector2f const last(static_cast<float>(width_ - 1), static_cast<float>(height_ - 1));
    if (!((corner.array() >= 0.0F).all() && (corner.array() < last.array()).all())) {
        return;
    }
    auto const x = static_cast<int>(corner.x());
    auto const y = static_cast<int>(corner.y());
    float const fx = corner.x() - static_cast<float>(x);
    float const fy = corner.y() - static_cast<float>(y);
    values_[index(x, y)] += (1.0F - fx) * (1.0F - fy);
    values_[index(x + 1, y)] += fx * (1.0F - fy);
    values_[index(x, y + 1)] += (1.0F - fx) * fy;
    values_[index(x + 1, y + 1)] += fx * fy;
}

void Density::blur(int radius)
{
    blurAlong(radius, width_, height_, 1, width_);
    blurAlong(radius, height_, width_, width_, 1);
}

void Density::widen()
{
    std::vector<float> const before = values_;
    for (int y = 1; y + 1 < height_; ++y) {
        for (int x = 1; x + 1 < width_; ++x) {
            values_[index(x, y)] = std::max({before[index(x, y)],
                                             before[index(x - 1, y)],
                                             before[index(x + 1, y)],
                                             before[index(x, y - 1)],
                                             before[index(x, y + 1)]});
        }
    }
}

float Density::nearlyHighest() const
{
    constexpr float something = 0.05F;
    std::vector<float> some;
    std::ranges::copy_if(values_, std::back_inserter(some), [](float v) { return v > something; });
    return std::max(mostOf(std::move(some), 0.05).high, 1.0F);
}

void Density::blurAlong(int radius, int length, int lines, int step, int lineStep)
{
    std::vector<float> line(static_cast<std::size_t>(length));
    for (int n = 0; n < lines; ++n) {
        auto const pixel = [&](int i) -> float& {
            return values_[static_cast<std::size_t>(n) * static_cast<std::size_t>(lineStep) +
                           static_cast<std::size_t>(i) * static_cast<std::size_t>(step)];
        };
        float sum = 0.0F; // of the window around i
        for (int i = -radius; i < length; ++i) {
            sum += i + radius < length ? pixel(i + radius) : 0.0F;
            sum -= i - radius - 1 >= 0 ? pixel(i - radius - 1) : 0.0F;
            if (i >= 0) {
                line[static_cast<std::size_t>(i)] = std::max(sum, 0.0F) / static_cast<float>(2 * radius + 1);
            }
        }
        for (int i = 0; i < length; ++i) {
            pixel(i) = line[static_cast<std::size_t>(i)];
        }
    }
}

} // namespace oV::Roamscan::tool
