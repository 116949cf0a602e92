/// @file
/// Measures each figure and its baselines in one run, and shows their ratios.

#include "bench/Benchmarks.h"
#include "bench/Measurement.h"
#include "bench/Report.h"
#include "tools/io/OutputFile.h"

#include <CLI/CLI.hpp>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <optional>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

struct Settings
{
    std::string jsonPath; // empty: none
    std::string filter;   // of "group: figure"; empty: all
    bool otherLibraries = false;
};

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
constexpr bool hasOtherLibraries = true;
#else
constexpr bool hasOtherLibraries = false;
#endif

std::vector<bench::Group> chosen(Settings const& settings)
{
    std::regex const filter(settings.filter, std::regex::icase);
    auto groups = bench::allGroups();
    for (auto& group : groups) {
        std::erase_if(group.figures, [&](bench::Figure const& figure) {
            return !std::regex_search(group.name + ": " + figure.name, filter);
        });
        for (auto& figure : group.figures) {
            std::erase_if(figure.baselines, [&](bench::Baseline const& baseline) {
                return baseline.isOtherLibrary && !settings.otherLibraries;
            });
        }
    }
    std::erase_if(groups, [](bench::Group const& group) { return group.figures.empty(); });
    if (groups.empty()) {
        throw std::invalid_argument("no figure matches '" + settings.filter + "'");
    }
    return groups;
}

void run(Settings const& settings)
{
    auto const groups = chosen(settings);
    std::optional<oV::Roamscan::tool::OutputFile> json;
    if (!settings.jsonPath.empty()) {
        json.emplace(settings.jsonPath);
    }
#ifndef NDEBUG
    std::fputs("this build is not optimized; its numbers mean nothing\n", stderr);
#endif
    bench::Measurement measurement;
    std::vector<bench::Result> results;
    for (auto const& group : groups) {
        bool isFirst = true;
        for (auto const& figure : group.figures) {
            if (auto const result = measurement.measure(group, figure)) {
                std::printf("%s%s",
                            isFirst ? ("\n" + bench::heading(group.name)).c_str() : "",
                            bench::rows(*result).c_str());
                std::fflush(stdout);
                results.push_back(*result);
                isFirst = false;
            }
        }
    }
    if (json) {
        json->stream() << bench::withRatios(measurement.json(), results);
        json->commit();
    }
}

// The defaults, which the caller's own options override.
void initializeGoogleBenchmark(char* program, std::vector<std::string> callersOptions)
{
    std::vector<std::string> options{"--benchmark_enable_random_interleaving=true",
                                     "--benchmark_repetitions=7",
                                     "--benchmark_min_time=0.02"};
    options.insert(options.end(), callersOptions.begin(), callersOptions.end());
    std::vector<char*> arguments{program};
    for (std::string& option : options) {
        arguments.push_back(option.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        std::exit(2);
    }
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Measures this library against baselines in one run.");
    app.footer(
        "Options of Google Benchmark are passed on, such as --benchmark_min_time=SECONDS and\n"
        "--benchmark_repetitions=N. Use --filter for --benchmark_filter and --json for --benchmark_out.");
    app.allow_extras();
    Settings settings;
    app.add_option("--json", settings.jsonPath, "also write all numbers to this file");
    app.add_option("--filter",
                   settings.filter,
                   "only the figures whose 'group: figure' matches this regular expression");
    auto* const otherLibraries =
        app.add_flag("--other-libraries", settings.otherLibraries, "also measure against other libraries");
    if (!hasOtherLibraries) {
        otherLibraries->check([](std::string const&) {
            return "other libraries are not built in; configure with ROAMSCAN_BUILD_BENCH_OTHER_LIBRARIES=ON";
        });
    }
    CLI11_PARSE(app, argc, argv);
    initializeGoogleBenchmark(argv[0], app.remaining());
    try {
        run(settings);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "roamscan_bench: %s\n", failure.what());
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}
