#pragma once

#include "bench/workload/ProcessMemory.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench
{

/// How a cost is shown.
struct Unit
{
    std::string name;
    double scale = 1.0;  ///< Shown is cost * scale,
    bool isRate = false; ///< or scale / cost.

    [[nodiscard]] double shown(double cost) const { return isRate ? scale / cost : cost * scale; }
};

inline Unit const nanoseconds{"ns", 1e9};
inline Unit const microseconds{"us", 1e6};
inline Unit const milliseconds{"ms", 1e3};
inline Unit const megabytes{"MB", 1e-6};
inline Unit const megabytesPerSecond{"MB/s", 1e-6, true};
inline Unit const megapointsPerSecond{"Mpts/s", 1e-6, true};

/// Something to measure.
struct Subject
{
    std::string label;
    std::function<double()> measure; ///< Runs once and gives the cost: seconds for one item, or bytes.
};

/// How a ratio is formed and read.
enum class Ratio
{
    TimesAsFast,   ///< Their cost through ours; a target is a lower bound.
    TimesTheTime,  ///< Our cost through theirs; a target is an upper bound.
    TimesTheMemory ///< The same for memory.
};

/// What ours is measured against.
struct Baseline
{
    Subject subject;
    Ratio ratio = Ratio::TimesAsFast;
    std::optional<double> target = std::nullopt; ///< What this project wants the ratio to be.
    bool isOtherLibrary = false;                 ///< A library of others; measured only if asked for.
};

/// One row of the report: ours and its baselines, all measured in turn in one run.
struct Comparison
{
    std::string group;
    std::string figure;
    Unit unit;
    int repetitions;
    Subject ours;
    std::vector<Baseline> baselines;
};

/// What one iteration of a benchmark does, and how often it is done for one measurement.
struct Workload
{
    double items;       ///< That one iteration works on; the cost is for one of them.
    int iterations = 1; ///< For one measurement.
};

/// A body whose loop is timed as a whole, in processor time. Registers it under `name`, for the report and
/// for Google Benchmark's own command line alike.
[[nodiscard]] Subject timedLoop(std::string label,
                                std::string const& name,
                                Workload workload,
                                std::function<void(benchmark::State&)> body);

/// A body that tells the time of each iteration itself; see timeEach().
[[nodiscard]] Subject timedByHand(std::string label,
                                  std::string const& name,
                                  Workload workload,
                                  std::function<void(benchmark::State&)> body);

/// Times the making of a result by the clock on the wall, in memory that is fresh and without its
/// destruction.
void timeEach(benchmark::State& state, auto make)
{
    for ([[maybe_unused]] auto _ : state) {
        releaseFreeMemory();
        auto const start = std::chrono::steady_clock::now();
        auto const result = make();
        auto const stop = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(&result);
        state.SetIterationTime(std::chrono::duration<double>(stop - start).count());
    }
}

} // namespace bench
