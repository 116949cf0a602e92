#pragma once

#include "bench/Figure.h"

#include <benchmark/benchmark.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace bench
{

/// Numbers of several repetitions.
struct Spread
{
    double smallest;
    double median;
    double largest;
};

/// A subject and one of its baselines, measured. Costs are in seconds for one item, or in bytes.
struct Comparison
{
    std::string group;
    Figure figure;
    Baseline baseline;
    Spread subjectCost;
    Spread baselineCost;
    Spread ratio; ///< Of the ratios of each repetition.

    /// Whether the median meets the target; true without a target.
    [[nodiscard]] bool meetsTarget() const
    {
        return !baseline.target || baseline.ratio.meets(*baseline.target, ratio.median);
    }
};

/// Runs figures through Google Benchmark.
class Measurement : private benchmark::BenchmarkReporter
{
public:
    Measurement() { json_.SetOutputStream(&text_); }

    /// Runs the figure's subject and its baselines together, so that their repetitions can be interleaved.
    /// @return one comparison for each baseline; none if Google Benchmark only lists the names of benchmarks
    /// @throws std::runtime_error if a function reports a failure
    [[nodiscard]] std::vector<Comparison> measure(Group const& group, Figure const& figure);

    /// All comparisons up to now.
    [[nodiscard]] std::vector<Comparison> const& comparisons() const { return comparisons_; }

    /// Google Benchmark's report in JSON on all that was measured. Call it once, at the end.
    [[nodiscard]] std::string json();

private:
    bool ReportContext(Context const& context) override;
    void ReportRuns(std::vector<Run> const& runs) override;

    std::map<std::string, std::vector<Run>>
        repetitions_; // of a figure's functions, by their registered names
    std::vector<Comparison> comparisons_;
    std::ostringstream text_;
    benchmark::JSONReporter json_;
};

} // namespace bench
