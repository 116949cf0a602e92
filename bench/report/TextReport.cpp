#include "TextReport.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench
{

namespace
{

// Three digits, and all that stand before the point.
std::string numberText(double value)
{
    int const decimals = value < 10.0 ? 2 : value < 100.0 ? 1 : 0;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

std::string left(std::string text, std::size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string right(std::string const& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string meaning(Ratio ratio)
{
    switch (ratio) {
    case Ratio::TimesAsFast:
        return "x as fast";
    case Ratio::TimesTheTime:
        return "x the time";
    case Ratio::TimesTheMemory:
        break;
    }
    return "x the memory";
}

std::string targetText(BaselineResult const& baseline)
{
    if (!baseline.target) {
        return "";
    }
    std::string const bound = baseline.ratio == Ratio::TimesAsFast ? ">= " : "<= ";
    return "target " + bound + numberText(*baseline.target) + "x" +
           (*baseline.meetsTarget() ? ", met" : ", MISSED");
}

std::string quantity(Unit const& unit, Series const& costs)
{
    return right(numberText(unit.shown(costs.median())), 8) + " " + left(unit.name, 6);
}

std::string rangeText(Series const& ratios)
{
    std::string text = "(";
    text += numberText(ratios.smallest()) + " to " + numberText(ratios.largest()) + ")";
    return text;
}

std::string row(Result const& result, BaselineResult const& baseline, bool isFirst)
{
    std::string line = left("", 2) + left(isFirst ? result.figure : "", 45) +
                       left(isFirst ? quantity(result.unit, result.costs) : "", 17) +
                       left(baseline.label, 21) + left(quantity(result.unit, baseline.costs), 15) +
                       right(numberText(baseline.ratios.median()), 6) + left(meaning(baseline.ratio), 13) +
                       left(rangeText(baseline.ratios), 16) + targetText(baseline);
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string heading(std::string const& group)
{
    return left("", 47) + left("    ours", 17) + left("baseline", 21) + left("  baseline", 15) +
           " ratio: median (range)\n" + group + "\n";
}

} // namespace

std::string textReport(std::vector<Result> const& results)
{
    std::string text;
    std::string group;
    for (Result const& result : results) {
        if (result.group != group) {
            text += group.empty() ? "" : "\n";
            group = result.group;
            text += heading(group);
        }
        for (BaselineResult const& baseline : result.baselines) {
            text += row(result, baseline, &baseline == &result.baselines.front());
        }
    }
    return text;
}

} // namespace bench
