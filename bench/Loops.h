#pragma once

#include "bench/workload/ProcessMemory.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>

namespace bench
{

/// For Cost::ProcessorTime: calls `function` with each of the items in turn.
void measureEach(benchmark::State& state, auto const& items, auto const& function)
{
    for ([[maybe_unused]] auto _ : state) {
        for (auto const& item : items) {
            auto const result = function(item);
            benchmark::DoNotOptimize(&result);
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(items)));
}

/// For Cost::ReportedTime: measures the wall-clock time of `work` on what `prepare` returns, with a heap that
/// keeps no free memory. Neither the preparation nor the destruction of a result counts.
void timeEach(benchmark::State& state, auto const& prepare, auto const& work)
{
    for ([[maybe_unused]] auto _ : state) {
        auto prepared = prepare();
        releaseFreeMemory();
        auto const start = std::chrono::steady_clock::now();
        auto const result = work(prepared);
        auto const stop = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(&result);
        state.SetIterationTime(std::chrono::duration<double>(stop - start).count());
    }
}

/// The same without a preparation.
void timeEach(benchmark::State& state, auto const& work)
{
    timeEach(
        state, [] { return nullptr; }, [&work](std::nullptr_t) { return work(); });
}

/// The counter of Google Benchmark that has the bytes of Cost::PeakMemory.
inline constexpr char const* peakMemoryCounter = "peak_memory";

/// For Cost::PeakMemory: measures in a child process the most memory that `work` on what `prepare` returns
/// takes in addition to what is prepared.
void measurePeakMemory(benchmark::State& state, auto const& prepare, auto const& work)
{
    for ([[maybe_unused]] auto _ : state) {
        state.counters[peakMemoryCounter] = inChild([&] {
            auto prepared = prepare();
            resetPeakMemory();
            double const before = peakMemory();
            auto const result = work(prepared);
            benchmark::DoNotOptimize(&result);
            return peakMemory() - before;
        });
    }
}

/// What the functions of a figure work on. It is made from its case when first used, and kept until another
/// case is asked for.
template <typename Input, typename Case>
[[nodiscard]] Input& inputFor(Case const& wanted)
{
    static std::optional<Case> current;
    static std::unique_ptr<Input> input;
    if (!input || !(*current == wanted)) {
        input.reset();
        input = std::make_unique<Input>(wanted);
        current = wanted;
    }
    return *input;
}

} // namespace bench
