#include "bench/Measurement.h"

#include "bench/Loops.h"

#include <algorithm>
#include <stdexcept>

namespace bench
{

namespace
{

using Run = benchmark::BenchmarkReporter::Run;

void registerFunction(std::string const& name, Function const& function, Cost cost)
{
    auto* const registered = benchmark::RegisterBenchmark(name.c_str(), function);
    if (cost == Cost::ReportedTime) {
        registered->UseManualTime();
    } else if (cost == Cost::PeakMemory) {
        registered->Iterations(1)->Repetitions(1);
    }
}

double costOf(Run const& run, Cost cost)
{
    if (run.error_occurred) {
        throw std::runtime_error(run.benchmark_name() + ": " + run.error_message);
    }
    if (cost == Cost::PeakMemory) {
        return run.counters.at(peakMemoryCounter);
    }
    if (auto const rate = run.counters.find("items_per_second"); rate != run.counters.end()) {
        return 1.0 / rate->second;
    }
    double const seconds = cost == Cost::ReportedTime ? run.real_accumulated_time : run.cpu_accumulated_time;
    return seconds / static_cast<double>(run.iterations);
}

Series costsOf(std::vector<Run> const& runs, Cost cost)
{
    Series costs;
    for (Run const& run : runs) {
        if (run.run_type == Run::RT_Iteration) {
            costs.values.push_back(costOf(run, cost));
        }
    }
    return costs;
}

Series ratiosOf(Series const& subject, Series const& baseline, Ratio ratio)
{
    Series ratios;
    for (std::size_t i = 0; i < subject.values.size(); ++i) {
        double const ours = subject.values[i];
        double const theirs = baseline.values[i];
        ratios.values.push_back(ratio == Ratio::TimesAsFast ? theirs / ours : ours / theirs);
    }
    return ratios;
}

} // namespace

double Series::median() const
{
    std::vector<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    std::size_t const middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2.0;
}

double Series::smallest() const
{
    return *std::min_element(values.begin(), values.end());
}

double Series::largest() const
{
    return *std::max_element(values.begin(), values.end());
}

std::optional<bool> BaselineResult::meetsTarget() const
{
    if (!baseline.target) {
        return std::nullopt;
    }
    double const ratio = ratios.median();
    return baseline.ratio == Ratio::TimesAsFast ? ratio >= *baseline.target : ratio <= *baseline.target;
}

std::optional<Result> Measurement::measure(Group const& group, Figure const& figure)
{
    std::string const prefix = group.name + "/" + figure.name + "/";
    benchmark::ClearRegisteredBenchmarks();
    registerFunction(prefix + figure.subject.label, figure.subject.function, group.cost);
    for (Baseline const& baseline : figure.baselines) {
        registerFunction(prefix + baseline.label, baseline.function, group.cost);
    }
    runs_.clear();
    benchmark::RunSpecifiedBenchmarks(this, "all");
    if (runs_.empty()) {
        return std::nullopt;
    }

    auto const costs = [&](std::string const& label) {
        return costsOf(runs_.at(prefix + label), group.cost);
    };
    Result result{
        group.name, figure.name, figure.unit, figure.subject.label, costs(figure.subject.label), {}};
    for (Baseline const& baseline : figure.baselines) {
        Series const theirs = costs(baseline.label);
        result.baselines.push_back({baseline, theirs, ratiosOf(result.costs, theirs, baseline.ratio)});
    }
    return result;
}

std::string Measurement::json()
{
    json_.Finalize();
    return text_.str();
}

bool Measurement::ReportContext(Context const& context)
{
    if (!isContextReported_) {
        isContextReported_ = true;
        return json_.ReportContext(context);
    }
    return true;
}

void Measurement::ReportRuns(std::vector<Run> const& runs)
{
    json_.ReportRuns(runs);
    // Called twice: with the repetitions, and with their aggregates.
    auto& all = runs_[runs.front().run_name.function_name];
    all.insert(all.end(), runs.begin(), runs.end());
}

} // namespace bench
