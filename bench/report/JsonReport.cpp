#include "JsonReport.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <ctime>

namespace bench
{

namespace
{

using Json = nlohmann::ordered_json;

Json toJson(Series const& series)
{
    return {{"median", series.median()}, {"values", series.values}};
}

Json toJson(std::string const& label, Unit const& unit, Series const& costs)
{
    return {{"label", label},
            {"shown", {{"value", unit.shown(costs.median())}, {"unit", unit.name}}},
            {"cost", toJson(costs)}};
}

char const* nameOf(Ratio ratio)
{
    switch (ratio) {
    case Ratio::TimesAsFast:
        return "times as fast";
    case Ratio::TimesTheTime:
        return "times the time";
    case Ratio::TimesTheMemory:
        break;
    }
    return "times the memory";
}

Json toJson(BaselineResult const& baseline, Unit const& unit)
{
    Json json = toJson(baseline.label, unit, baseline.costs);
    json["ratio"] = toJson(baseline.ratios);
    json["ratio"]["kind"] = nameOf(baseline.ratio);
    if (baseline.target) {
        json["target"] = {{"bound", baseline.ratio == Ratio::TimesAsFast ? "at least" : "at most"},
                          {"value", *baseline.target},
                          {"met", *baseline.meetsTarget()}};
    }
    return json;
}

std::string timeText()
{
    std::time_t const now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::string text(32, '\0');
    text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc));
    return text;
}

Json context()
{
    auto const& cpu = benchmark::CPUInfo::Get();
    Json caches = Json::array();
    for (auto const& cache : cpu.caches) {
        caches.push_back({{"level", cache.level}, {"type", cache.type}, {"bytes", cache.size}});
    }
    return {{"time", timeText()},
            {"cores", cpu.num_cpus},
            {"cyclesPerSecond", cpu.cycles_per_second},
            {"loadAverage", cpu.load_avg},
            {"caches", caches}};
}

} // namespace

std::string jsonReport(std::vector<Result> const& results)
{
    Json figures = Json::array();
    for (Result const& result : results) {
        Json figure{{"group", result.group},
                    {"figure", result.figure},
                    {"ours", toJson(result.label, result.unit, result.costs)},
                    {"baselines", Json::array()}};
        for (BaselineResult const& baseline : result.baselines) {
            figure["baselines"].push_back(toJson(baseline, result.unit));
        }
        figures.push_back(std::move(figure));
    }
    Json const report{{"context", context()}, {"figures", std::move(figures)}};
    return report.dump(2) + "\n";
}

} // namespace bench
