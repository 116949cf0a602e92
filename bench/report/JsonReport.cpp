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

Json toJson(ReferenceResult const& reference, Unit const& unit)
{
    Json json = toJson(reference.label, unit, reference.costs);
    json["ratio"] = toJson(reference.ratios);
    json["ratio"]["kind"] = nameOf(reference.ratio);
    if (reference.target) {
        json["target"] = {{"bound", reference.ratio == Ratio::TimesAsFast ? "at least" : "at most"},
                          {"value", *reference.target},
                          {"met", *reference.meetsTarget()}};
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
        Json figure{{"road", result.road},
                    {"figure", result.figure},
                    {"ours", toJson(result.label, result.unit, result.costs)},
                    {"references", Json::array()}};
        for (ReferenceResult const& reference : result.references) {
            figure["references"].push_back(toJson(reference, result.unit));
        }
        figures.push_back(std::move(figure));
    }
    Json const report{{"context", context()}, {"figures", std::move(figures)}};
    return report.dump(2) + "\n";
}

} // namespace bench
