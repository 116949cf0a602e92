#include "bench/Report.h"

#include "tools/console/Text.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace bench
{

namespace
{

using Json = nlohmann::ordered_json;

// Three significant digits, and every digit before the decimal point.
std::string numberText(double value)
{
    return oV::Roamscan::tool::fixed(value, value < 10.0 ? 2 : value < 100.0 ? 1 : 0);
}

std::string quantity(Unit const& unit, Spread const& cost)
{
    return numberText(unit.shown(cost.median)) + " " + unit.name;
}

std::string targetText(Comparison const& comparison)
{
    auto const& target = comparison.baseline.target;
    if (!target) {
        return "";
    }
    std::string const bound = comparison.baseline.ratio.isSpeedup ? ">= " : "<= ";
    return "target " + bound + numberText(*target) + (comparison.meetsTarget() ? "x, met" : "x, MISSED");
}

Json toJson(Spread const& spread)
{
    return {{"median", spread.median}, {"min", spread.smallest}, {"max", spread.largest}};
}

Json toJson(Comparison const& comparison)
{
    auto const& [label, function, ratio, target] = comparison.baseline;
    Json json{{"group", comparison.group},
              {"figure", comparison.figure.name},
              {"subject", comparison.figure.subject.label},
              {"subject_cost", toJson(comparison.subjectCost)},
              {"baseline", label},
              {"baseline_cost", toJson(comparison.baselineCost)},
              {"ratio", toJson(comparison.ratio)},
              {"ratio_kind", "times " + ratio.meaning}};
    if (target) {
        json["target"] = *target;
        json["target_met"] = comparison.meetsTarget();
    }
    return json;
}

} // namespace

void printHeading(std::string const& group)
{
    constexpr char const* columns = "cost          baseline              its cost      ratio: median (range)";
    std::printf("\n%-56s%s\n%s\n", "", columns, group.c_str());
}

void printRows(std::vector<Comparison> const& comparisons)
{
    bool isFirst = true;
    for (Comparison const& comparison : comparisons) {
        auto const& figure = comparison.figure;
        auto const& [smallest, median, largest] = comparison.ratio;
        std::string const ratio = numberText(median) + "x " + comparison.baseline.ratio.meaning + " (" +
                                  numberText(smallest) + " to " + numberText(largest) + ")";
        std::printf("  %-54s%-14s%-22s%-14s%-36s%s\n",
                    isFirst ? figure.name.c_str() : "",
                    isFirst ? quantity(figure.unit, comparison.subjectCost).c_str() : "",
                    comparison.baseline.label.c_str(),
                    quantity(figure.unit, comparison.baselineCost).c_str(),
                    ratio.c_str(),
                    targetText(comparison).c_str());
        isFirst = false;
    }
    std::fflush(stdout);
}

std::string withRatios(std::string const& googleBenchmarkJson, std::vector<Comparison> const& comparisons)
{
    Json json = Json::parse(googleBenchmarkJson);
    json["ratios"] = Json::array();
    for (Comparison const& comparison : comparisons) {
        json["ratios"].push_back(toJson(comparison));
    }
    return json.dump(2) + "\n";
}

} // namespace bench
