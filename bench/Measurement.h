#pragma once

#include "bench/Figure.h"

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace bench
{

/// The numbers of the repetitions of one benchmark.
struct Series
{
    std::vector<double> values;

    [[nodiscard]] double median() const;
    [[nodiscard]] double smallest() const;
    [[nodiscard]] double largest() const;
};

struct BaselineResult
{
    Baseline baseline;
    Series costs;
    Series ratios; ///< One for each repetition.

    /// Whether the median meets the target; empty without a target.
    [[nodiscard]] std::optional<bool> meetsTarget() const;
};

/// Costs are in seconds for one item, or in bytes.
struct Result
{
    std::string group;
    std::string figure;
    Unit unit;
    std::string label;
    Series costs;
    std::vector<BaselineResult> baselines;
};

/// Runs figures through Google Benchmark.
class Measurement : private benchmark::BenchmarkReporter
{
public:
    Measurement() { json_.SetOutputStream(&text_); }

    /// Runs the figure's subject and its baselines together, so that their repetitions can be interleaved.
    /// @return empty if Google Benchmark was asked only for the names of the benchmarks
    /// @throws std::runtime_error if a function reports a failure
    [[nodiscard]] std::optional<Result> measure(Group const& group, Figure const& figure);

    /// Google Benchmark's own report in JSON on all that was measured. Call it once, at the end.
    [[nodiscard]] std::string json();

private:
    bool ReportContext(Context const& context) override;
    void ReportRuns(std::vector<Run> const& runs) override;

    std::map<std::string, std::vector<Run>> runs_; // of the figure, by the registered name
    bool isContextReported_ = false;
    std::ostringstream text_;
    benchmark::JSONReporter json_;
};

} // namespace bench
