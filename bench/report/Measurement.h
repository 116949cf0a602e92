#pragma once

#include "Comparison.h"

#include <optional>
#include <string>
#include <vector>

namespace bench
{

/// Numbers that were measured one after the other.
struct Series
{
    std::vector<double> values;

    [[nodiscard]] double median() const;
    [[nodiscard]] double smallest() const;
    [[nodiscard]] double largest() const;
};

struct BaselineResult
{
    std::string label;
    Ratio ratio;
    std::optional<double> target;
    Series costs;
    Series ratios; ///< Each of one cost of ours and the one of theirs measured right behind it.

    /// Whether the median meets the target; empty without one.
    [[nodiscard]] std::optional<bool> meetsTarget() const;
};

struct Result
{
    std::string group;
    std::string figure;
    Unit unit;
    std::string label;
    Series costs;
    std::vector<BaselineResult> baselines;
};

/// Measures ours and each baseline in turn, as often as the comparison wants, so that what else the machine
/// does hits all alike.
[[nodiscard]] Result measure(Comparison const& comparison);

} // namespace bench
