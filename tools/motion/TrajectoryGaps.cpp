#include "tools/motion/TrajectoryGaps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace oV::Roamscan::tool
{

std::vector<double> timesInOrder(std::span<TrajectoryNode const> nodes)
{
    std::vector<double> times;
    times.reserve(nodes.size());
    for (TrajectoryNode const& node : nodes) {
        if (std::isfinite(node.time)) {
            times.push_back(node.time);
        }
    }
    std::ranges::sort(times);
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

double usualStep(std::span<double const> times)
{
    if (times.size() < 2) {
        return 0.0;
    }
    std::vector<double> steps(times.size() - 1);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        steps[i] = times[i + 1] - times[i];
    }
    auto const middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::ranges::nth_element(steps, middle);
    return *middle;
}

double defaultLongestGap(std::span<double const> times)
{
    return 10.0 * usualStep(times);
}

std::vector<TrajectoryGap> gapsLongerThan(double longest, std::span<double const> times)
{
    std::vector<TrajectoryGap> gaps;
    for (std::size_t i = 1; i < times.size(); ++i) {
        if (times[i] - times[i - 1] > longest) {
            gaps.push_back({times[i - 1], times[i]});
        }
    }
    return gaps;
}

bool isInGap(double time, std::span<TrajectoryGap const> gaps)
{
    auto const after = std::ranges::upper_bound(gaps, time, {}, &TrajectoryGap::from);
    return after != gaps.begin() && time > std::prev(after)->from && time < std::prev(after)->to;
}

} // namespace oV::Roamscan::tool
