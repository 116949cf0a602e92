#include "bench/Measurement.h"

#include "bench/Loops.h"

#include <algorithm>
#include <stdexcept>

namespace bench
{

namespace
{

using Run = benchmark::BenchmarkReporter::Run;

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

Spread spreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    std::size_t const last = values.size() - 1;
    return {values.front(), (values[last / 2] + values[(last + 1) / 2]) / 2.0, values.back()};
}

} // namespace

std::vector<Comparison> Measurement::measure(Group const& group, Figure const& figure)
{
    auto const nameOf = [&](std::string const& label) {
        return group.name + "/" + figure.name + "/" + label;
    };
    auto const add = [&](std::string const& label, Function const& function) {
        auto* const registered = benchmark::RegisterBenchmark(nameOf(label).c_str(), function);
        if (group.cost == Cost::ReportedTime) {
            registered->UseManualTime();
        } else if (group.cost == Cost::PeakMemory) {
            registered->Iterations(1)->Repetitions(1);
        }
    };
    auto const costs = [&](std::string const& label) {
        std::vector<double> values;
        for (Run const& run : repetitions_.at(nameOf(label))) {
            values.push_back(costOf(run, group.cost));
        }
        return values;
    };

    benchmark::ClearRegisteredBenchmarks();
    repetitions_.clear();
    add(figure.subject.label, figure.subject.function);
    for (Baseline const& baseline : figure.baselines) {
        add(baseline.label, baseline.function);
    }
    benchmark::RunSpecifiedBenchmarks(this, "all");
    if (repetitions_.empty()) {
        return {};
    }

    std::vector<Comparison> comparisons;
    auto const ours = costs(figure.subject.label);
    for (Baseline const& baseline : figure.baselines) {
        auto const theirs = costs(baseline.label);
        std::vector<double> ratios;
        for (std::size_t i = 0; i < ours.size(); ++i) {
            ratios.push_back(baseline.ratio.of(ours[i], theirs[i]));
        }
        comparisons.push_back(
            {group.name, figure, baseline, spreadOf(ours), spreadOf(theirs), spreadOf(ratios)});
    }
    comparisons_.insert(comparisons_.end(), comparisons.begin(), comparisons.end());
    return comparisons;
}

std::string Measurement::json()
{
    json_.Finalize();
    return text_.str();
}

bool Measurement::ReportContext(Context const& context)
{
    return text_.tellp() > 0 || json_.ReportContext(context); // once, not for each figure
}

void Measurement::ReportRuns(std::vector<Run> const& runs)
{
    json_.ReportRuns(runs);
    for (Run const& run : runs) {
        if (run.run_type == Run::RT_Iteration) {
            repetitions_[run.run_name.function_name].push_back(run);
        }
    }
}

} // namespace bench
