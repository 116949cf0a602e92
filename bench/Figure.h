#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <optional>
#include <string>
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
struct Ratio
{
    std::string meaning; ///< In "2.50x as fast".
    bool isSpeedup;      ///< The baseline's cost divided by the subject's, or the reverse.

    [[nodiscard]] double of(double subjectCost, double baselineCost) const
    {
        return isSpeedup ? baselineCost / subjectCost : subjectCost / baselineCost;
    }

    /// A target is a lower bound for a speedup, otherwise an upper bound.
    [[nodiscard]] bool meets(double target, double ratio) const
    {
        return isSpeedup ? ratio >= target : ratio <= target;
    }
};

inline Ratio const timesAsFast{"as fast", true};
inline Ratio const timesTheTime{"the time", false};
inline Ratio const timesTheMemory{"the memory", false};

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
    Ratio ratio = timesAsFast;
    std::optional<double> target = std::nullopt; ///< The bound that this project sets for the ratio.
};

/// A subject and its baselines, measured in one run. A new figure is a function, and one line in the list of
/// a group:
/// @code
/// {"getOption among 10,000", nanoseconds, {"getOption", lookUp},
///  {{"std::map", lookUpInMap, timesAsFast, 1.5}}},
/// @endcode
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
