/// @file
/// Measures each figure and its baselines in one run, and shows their ratios.

#include "Benchmarks.h"
#include "report/JsonReport.h"
#include "report/Measurement.h"
#include "report/TextReport.h"

#include <CLI/CLI.hpp>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <regex>
#include <stdexcept>

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

std::vector<bench::Comparison> chosen(Settings const& settings)
{
    std::regex const filter(settings.filter, std::regex::icase);
    auto comparisons = bench::allBenchmarks();
    std::erase_if(comparisons, [&filter](bench::Comparison const& comparison) {
        return !std::regex_search(comparison.group + ": " + comparison.figure, filter);
    });
    for (auto& comparison : comparisons) {
        std::erase_if(comparison.baselines, [&settings](bench::Baseline const& baseline) {
            return baseline.isOtherLibrary && !settings.otherLibraries;
        });
    }
    if (comparisons.empty()) {
        throw std::invalid_argument("no figure matches '" + settings.filter + "'");
    }
    return comparisons;
}

std::vector<bench::Result> measureAll(std::vector<bench::Comparison> const& comparisons)
{
    std::vector<bench::Result> results;
    for (auto const& comparison : comparisons) {
        std::fprintf(stderr,
                     "[%zu/%zu] %s: %s\n",
                     results.size() + 1,
                     comparisons.size(),
                     comparison.group.c_str(),
                     comparison.figure.c_str());
        results.push_back(bench::measure(comparison));
    }
    return results;
}

// Opened before anything is measured, and renamed when all of it is written.
class JsonFile
{
public:
    explicit JsonFile(std::string path) : path_(std::move(path)), part_(path_ + ".part"), stream_(part_)
    {
        if (!stream_) {
            throw std::runtime_error("cannot write '" + path_ + "'");
        }
    }
    JsonFile(JsonFile const&) = delete;
    JsonFile& operator=(JsonFile const&) = delete;
    ~JsonFile()
    {
        std::error_code ignored; // it is gone already if all went well
        std::filesystem::remove(part_, ignored);
    }

    void write(std::string const& text)
    {
        stream_ << text;
        stream_.close();
        if (!stream_) {
            throw std::runtime_error("cannot write '" + path_ + "'");
        }
        std::filesystem::rename(part_, path_);
    }

private:
    std::string path_;
    std::string part_;
    std::ofstream stream_;
};

void run(Settings const& settings)
{
    auto const comparisons = chosen(settings);
    std::optional<JsonFile> json;
    if (!settings.jsonPath.empty()) {
        json.emplace(settings.jsonPath);
    }
#ifndef NDEBUG
    std::fprintf(stderr, "this build is not optimized; its numbers mean nothing\n");
#endif
    auto const results = measureAll(comparisons);
    std::fputs(bench::textReport(results).c_str(), stdout);
    if (json) {
        json->write(bench::jsonReport(results));
    }
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Measures this library against baselines in one run.");
    Settings settings;
    app.add_option("--json", settings.jsonPath, "also write all numbers to this file");
    app.add_option(
        "--filter", settings.filter, "only the figures whose 'group: figure' matches this expression");
    auto* const otherLibraries =
        app.add_flag("--other-libraries", settings.otherLibraries, "also against other libraries");
    if (!hasOtherLibraries) {
        otherLibraries->check([](std::string const&) {
            return "other libraries are not built in; configure with ROAMSCAN_BUILD_BENCH_OTHER_LIBRARIES=ON";
        });
    }
    CLI11_PARSE(app, argc, argv);

    int benchmarkArguments = 1;
    benchmark::Initialize(&benchmarkArguments, argv);
    try {
        run(settings);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "roamscan_bench_report: %s\n", failure.what());
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}
