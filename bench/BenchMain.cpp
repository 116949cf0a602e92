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

// The groups without the figures whose "group: figure" does not match.
std::vector<bench::Group> chosen(std::string const& filter)
{
    std::regex const expression(filter, std::regex::icase);
    auto groups = bench::allGroups();
    for (auto& group : groups) {
        std::erase_if(group.figures, [&](bench::Figure const& figure) {
            return !std::regex_search(group.name + ": " + figure.name, expression);
        });
    }
    std::erase_if(groups, [](bench::Group const& group) { return group.figures.empty(); });
    if (groups.empty()) {
        throw std::invalid_argument("no figure matches '" + filter + "'");
    }
    return groups;
}

void run(std::string const& filter, std::string const& jsonPath)
{
    auto const groups = chosen(filter);
    std::optional<oV::Roamscan::tool::OutputFile> json;
    if (!jsonPath.empty()) {
        json.emplace(jsonPath);
    }
#ifndef NDEBUG
    std::fputs("this build is not optimized; its numbers mean nothing\n", stderr);
#endif
    bench::Measurement measurement;
    for (auto const& group : groups) {
        bench::printHeading(group.name);
        for (auto const& figure : group.figures) {
            bench::printRows(measurement.measure(group, figure));
        }
    }
    if (json) {
        json->stream() << bench::withRatios(measurement.json(), measurement.comparisons());
        json->commit();
    }
}

} // namespace

int main(int argc, char** argv)
{
    static CLI::App app("Measures this library against baselines in one run.");
    app.footer(
        "Options of Google Benchmark are passed on, such as --benchmark_min_time=SECONDS and\n"
        "--benchmark_repetitions=N. Use --filter for --benchmark_filter and --json for --benchmark_out.");
    std::string jsonPath;
    std::string filter;
    app.add_option("--json", jsonPath, "also write all numbers to this file");
    app.add_option(
        "--filter", filter, "only the figures whose 'group: figure' matches this regular expression");

    // Our defaults first: the caller's options override them.
    std::vector<std::string> options{argv[0],
                                     "--benchmark_enable_random_interleaving=true",
                                     "--benchmark_repetitions=7",
                                     "--benchmark_min_time=0.02"};
    options.insert(options.end(), argv + 1, argv + argc);
    std::vector<char*> arguments;
    for (std::string& option : options) {
        arguments.push_back(option.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data(), [] { std::fputs(app.help().c_str(), stdout); });
    CLI11_PARSE(app, count, arguments.data());
    try {
        run(filter, jsonPath);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "roamscan_bench: %s\n", failure.what());
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}
