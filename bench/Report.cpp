#include "bench/Report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench
{

namespace
{

using Json = nlohmann::ordered_json;

std::string nameOf(Ratio ratio)
{
    switch (ratio) {
    case Ratio::TimesAsFast:
        return "as fast";
    case Ratio::TimesTheTime:
        return "the time";
    case Ratio::TimesTheMemory:
        break;
    }
    return "the memory";
}

// Three significant digits, and every digit before the decimal point.
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

std::string targetText(BaselineResult const& result)
{
    if (!result.baseline.target) {
        return "";
    }
    std::string const bound = result.baseline.ratio == Ratio::TimesAsFast ? ">= " : "<= ";
    return "target " + bound + numberText(*result.baseline.target) + "x" +
           (*result.meetsTarget() ? ", met" : ", MISSED");
}

std::string quantity(Unit const& unit, Series const& costs)
{
    return right(numberText(unit.shown(costs.median())), 8) + " " + left(unit.name, 6);
}

std::string rangeText(Series const& ratios)
{
    return std::string("(").append(numberText(ratios.smallest())) + " to " + numberText(ratios.largest()) +
           ")";
}

Json toJson(Series const& series)
{
    return {{"median", series.median()},
            {"min", series.smallest()},
            {"max", series.largest()},
            {"values", series.values}};
}

Json toJson(std::string const& label, Unit const& unit, Series const& costs)
{
    return {{"label", label},
            {"shown", {{"value", unit.shown(costs.median())}, {"unit", unit.name}}},
            {"cost", toJson(costs)}};
}

Json toJson(Result const& result, BaselineResult const& against)
{
    Json json{{"group", result.group},
              {"figure", result.figure},
              {"subject", toJson(result.label, result.unit, result.costs)},
              {"baseline", toJson(against.baseline.label, result.unit, against.costs)},
              {"ratio", toJson(against.ratios)}};
    json["ratio"]["kind"] = "times " + nameOf(against.baseline.ratio);
    if (against.baseline.target) {
        json["target"] = {{"bound", against.baseline.ratio == Ratio::TimesAsFast ? "at least" : "at most"},
                          {"value", *against.baseline.target},
                          {"met", *against.meetsTarget()}};
    }
    return json;
}

} // namespace

std::string heading(std::string const& group)
{
    return left("", 47) + left(" subject", 17) + left("baseline", 21) + left("its cost", 15) +
           " ratio: median (range)\n" + group + "\n";
}

std::string rows(Result const& result)
{
    std::string text;
    std::string start = left("  " + result.figure, 47) + left(quantity(result.unit, result.costs), 17);
    for (BaselineResult const& against : result.baselines) {
        std::string line =
            start + left(against.baseline.label, 21) + left(quantity(result.unit, against.costs), 15) +
            right(numberText(against.ratios.median()), 6) + left("x " + nameOf(against.baseline.ratio), 13) +
            left(rangeText(against.ratios), 16) + targetText(against);
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
        start.assign(start.size(), ' ');
    }
    return text;
}

std::string withRatios(std::string const& googleBenchmarkJson, std::vector<Result> const& results)
{
    Json json = Json::parse(googleBenchmarkJson);
    json["ratios"] = Json::array();
    for (Result const& result : results) {
        for (BaselineResult const& against : result.baselines) {
            json["ratios"].push_back(toJson(result, against));
        }
    }
    return json.dump(2) + "\n";
}

} // namespace bench
