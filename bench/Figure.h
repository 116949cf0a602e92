#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bench
{

/// A function of Google Benchmark. If an iteration works on several items, the function reports their number
/// by State::SetItemsProcessed, and the figure is the cost of one item.
using Function = std::function<void(benchmark::State&)>;

/// What is measured of the functions of a group.
enum class Cost
{
    ProcessorTime, ///< Of the loop over the state. For short work that never waits.
    ReportedTime,  ///< Reported by the function for each iteration, as timeEach() does.
    PeakMemory     ///< Reported by the function, as measurePeakMemory() does. Measured once.
};

/// The unit that a cost is shown in.
struct Unit
{
    std::string name;
    double scale = 1.0;  ///< The figure is cost * scale,
    bool isRate = false; ///< or scale / cost.

    [[nodiscard]] double shown(double cost) const { return isRate ? scale / cost : cost * scale; }
};

inline Unit const nanoseconds{"ns", 1e9};
inline Unit const microseconds{"us", 1e6};
inline Unit const milliseconds{"ms", 1e3};
inline Unit const megabytes{"MB", 1e-6};
inline Unit const megabytesPerSecond{"MB/s", 1e-6, true};    ///< The items are bytes.
inline Unit const megapointsPerSecond{"Mpts/s", 1e-6, true}; ///< The items are points.

/// How the ratio to a baseline is formed.
enum class Ratio
{
    TimesAsFast,   ///< The baseline's cost divided by the subject's. A target is a lower bound.
    TimesTheTime,  ///< The subject's cost divided by the baseline's. A target is an upper bound.
    TimesTheMemory ///< The same for memory.
};

/// What is measured.
struct Subject
{
    std::string label;
    Function function;
};

/// What a subject is measured against.
struct Baseline
{
    std::string label;
    Function function;
    Ratio ratio = Ratio::TimesAsFast;
    std::optional<double> target = std::nullopt; ///< The bound that this project sets for the ratio.
    bool isOtherLibrary = false;                 ///< Measured only with --other-libraries.
};

[[nodiscard]] inline Baseline
otherLibrary(std::string label, Function function, std::optional<double> target = std::nullopt)
{
    return {std::move(label), std::move(function), Ratio::TimesAsFast, target, true};
}

/// A subject and its baselines, measured in one run.
struct Figure
{
    std::string name;
    Unit unit;
    Subject subject;
    std::vector<Baseline> baselines;
};

/// Figures that are shown together.
struct Group
{
    std::string name;
    Cost cost;
    std::vector<Figure> figures;
};

} // namespace bench
