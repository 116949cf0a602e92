#include "Measurement.h"

#include <algorithm>

namespace bench
{

double Series::median() const
{
    std::vector<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    std::size_t const middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2.0;
}

double Series::smallest() const
{
    return *std::min_element(values.begin(), values.end());
}

double Series::largest() const
{
    return *std::max_element(values.begin(), values.end());
}

std::optional<bool> BaselineResult::meetsTarget() const
{
    if (!target) {
        return std::nullopt;
    }
    return ratio == Ratio::TimesAsFast ? ratios.median() >= *target : ratios.median() <= *target;
}

Result measure(Comparison const& comparison)
{
    Result result{comparison.group, comparison.figure, comparison.unit, comparison.ours.label, {}, {}};
    for (Baseline const& baseline : comparison.baselines) {
        result.baselines.push_back({baseline.subject.label, baseline.ratio, baseline.target, {}, {}});
    }
    for (int i = 0; i < comparison.repetitions; ++i) {
        double const ours = comparison.ours.measure();
        result.costs.values.push_back(ours);
        for (std::size_t k = 0; k < comparison.baselines.size(); ++k) {
            double const theirs = comparison.baselines[k].subject.measure();
            auto& baseline = result.baselines[k];
            baseline.costs.values.push_back(theirs);
            baseline.ratios.values.push_back(baseline.ratio == Ratio::TimesAsFast ? theirs / ours
                                                                                  : ours / theirs);
        }
    }
    return result;
}

} // namespace bench
