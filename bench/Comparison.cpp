#include "Comparison.h"

#include <stdexcept>
#include <utility>

namespace bench
{

namespace
{

// Keeps what a run of one benchmark tells, and prints nothing.
class QuietReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(Context const& /*context*/) override { return true; }
    void ReportRuns(std::vector<Run> const& newRuns) override
    {
        runs_.insert(runs_.end(), newRuns.begin(), newRuns.end());
    }

    [[nodiscard]] std::vector<Run> const& runs() const { return runs_; }

private:
    std::vector<Run> runs_;
};

enum class Clock
{
    Processor, // Not disturbed by what else runs on the machine, and right for what never waits.
    ByHand     // The time that the body reports.
};

double secondsOfOneIteration(std::string const& name, Clock clock)
{
    QuietReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter, "^" + name + "(/(iterations|manual_time).*)?$");
    if (reporter.runs().size() != 1) {
        throw std::logic_error("not exactly one benchmark is named " + name);
    }
    auto const& run = reporter.runs().front();
    if (run.error_occurred) {
        throw std::runtime_error(name + ": " + run.error_message);
    }
    double const seconds = clock == Clock::Processor ? run.cpu_accumulated_time : run.real_accumulated_time;
    return seconds / static_cast<double>(run.iterations);
}

Subject subject(std::string label, std::string const& name, Workload workload, Clock clock)
{
    return {std::move(label),
            [name, clock, items = workload.items] { return secondsOfOneIteration(name, clock) / items; }};
}

benchmark::internal::Benchmark*
registerBenchmark(std::string const& name, Workload workload, std::function<void(benchmark::State&)> body)
{
    auto const countItems = [body = std::move(body), workload](benchmark::State& state) {
        body(state);
        state.SetItemsProcessed(
            static_cast<std::int64_t>(workload.items * static_cast<double>(state.iterations())));
    };
    return benchmark::RegisterBenchmark(name.c_str(), countItems)->Iterations(workload.iterations);
}

} // namespace

Subject timedLoop(std::string label,
                  std::string const& name,
                  Workload workload,
                  std::function<void(benchmark::State&)> body)
{
    registerBenchmark(name, workload, std::move(body));
    return subject(std::move(label), name, workload, Clock::Processor);
}

Subject timedByHand(std::string label,
                    std::string const& name,
                    Workload workload,
                    std::function<void(benchmark::State&)> body)
{
    registerBenchmark(name, workload, std::move(body))->UseManualTime();
    return subject(std::move(label), name, workload, Clock::ByHand);
}

} // namespace bench
