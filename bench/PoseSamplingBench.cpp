/// @file
/// The pose of a trajectory at a time: against an ordered map, against the interpolation alone, and, where it
/// is built in, against tf2.

#include "Benchmarks.h"
#include "bench/workload/Walk.h"
#include "tests/support/MapPoseFunction.h"

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "baselines/Tf2Buffer.h"
#endif

#include <algorithm>
#include <memory>
#include <span>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::TimeStamp;
using oV::Roamscan::Trajectory;

constexpr int repetitions = 9;

struct Case
{
    std::size_t poses;
    Spacing spacing;

    bool operator==(Case const&) const = default;
};

std::size_t queryCount(Case which, bool ascending)
{
    if (which.poses < 1'000'000) {
        return 100'000;
    }
    return ascending ? 1'000'000 : 400'000;
}

// The same poses in every form that is measured.
struct Inputs
{
    explicit Inputs(Case which) : walk(makeWalk(which.poses, which.spacing))
    {
        support::MapPoseFunction plain;
        for (std::size_t i = 0; i < walk.times.size(); ++i) {
            plain.poses[TimeStamp(walk.times[i])] = walk.poses[i];
        }
        map = std::move(plain);
        trajectory = oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(which.poses, which.spacing));
        random = makeQueries(walk.times, queryCount(which, false), false);
        ascending = makeQueries(walk.times, queryCount(which, true), true);
        requireAgreement(random);
        requireAgreement(ascending);
    }

    [[nodiscard]] Pose interpolated(Queries::Neighbours const& neighbours) const
    {
        return walk.poses[neighbours.lower].interpolate(walk.poses[neighbours.lower + 1],
                                                        neighbours.fraction);
    }

    // Whoever gives another answer is not to be compared with.
    void requireAgreement(Queries const& queries) const
    {
        for (std::size_t i = 0; i < queries.times.size(); i += 101) {
            auto const pose = trajectory.sample(queries.times[i]).serialize();
            if (pose != map(queries.times[i]).serialize() ||
                pose != interpolated(queries.neighbours[i]).serialize()) {
                throw std::logic_error("trajectory, map and interpolation differ");
            }
        }
    }

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    void makeTf2() const
    {
        if (!tf2) {
            std::vector<Tf2Buffer::FlatPose> poses;
            for (Pose const& pose : walk.poses) {
                poses.push_back(pose.serialize());
            }
            tf2 = std::make_unique<Tf2Buffer>(walk.times, poses);
        }
    }

    mutable std::unique_ptr<Tf2Buffer> tf2; // when it is first needed: it takes its time
#endif

    Walk walk;
    Trajectory::PoseFunction map;
    Trajectory trajectory;
    Queries random;
    Queries ascending;
};

// Only those of one case are kept at a time; the comparisons come case by case.
Inputs const& inputsOf(Case which)
{
    static Case current{};
    static std::unique_ptr<Inputs> inputs;
    if (!inputs || !(current == which)) {
        inputs.reset();
        inputs = std::make_unique<Inputs>(which);
        current = which;
    }
    return *inputs;
}

void askEach(benchmark::State& state, auto const& queries, auto const& answer)
{
    for ([[maybe_unused]] auto _ : state) {
        for (auto const& query : queries) {
            auto const pose = answer(query);
            benchmark::DoNotOptimize(&pose);
            benchmark::ClobberMemory();
        }
    }
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
// A part of the times is enough of what takes so long.
Baseline tf2Baseline(Case which, bool ascending, std::string const& name)
{
    constexpr std::size_t lookups = 100'000;
    auto const body = [which, ascending](benchmark::State& state) {
        auto const& inputs = inputsOf(which);
        inputs.makeTf2();
        auto const& all = ascending ? inputs.ascending.times : inputs.random.times;
        std::vector<double> times;
        for (std::size_t i = 0; i < lookups; ++i) {
            times.push_back(all[i * (all.size() / lookups)]);
        }
        askEach(state, times, [&tf2 = *inputs.tf2](double time) { return tf2.sample(time); });
    };
    Baseline baseline{timedLoop("tf2 lookup", name + "/tf2", {static_cast<double>(lookups)}, body)};
    baseline.isOtherLibrary = true;
    return baseline;
}
#endif

Comparison compareSampling(Case which, bool ascending)
{
    auto const queriesOf = [ascending](Inputs const& inputs) -> Queries const& {
        return ascending ? inputs.ascending : inputs.random;
    };
    std::string const order = ascending ? "ascending" : "random";
    std::string const name = "sample/" + order + "/" + std::to_string(which.poses) + "/" +
                             nameOf(which.spacing).substr(0, nameOf(which.spacing).find(' '));
    bool const isMillion = which.poses == 1'000'000;
    Workload const work{static_cast<double>(queryCount(which, ascending)), isMillion ? 1 : 4};

    auto const ours = [which, queriesOf](benchmark::State& state) {
        auto const& inputs = inputsOf(which);
        askEach(state, queriesOf(inputs).times, [&trajectory = inputs.trajectory](double time) {
            return trajectory.sample(time);
        });
    };
    auto const map = [which, queriesOf](benchmark::State& state) {
        auto const& inputs = inputsOf(which);
        askEach(
            state, queriesOf(inputs).times, [&function = inputs.map](double time) { return function(time); });
    };
    auto const bare = [which, queriesOf](benchmark::State& state) {
        auto const& inputs = inputsOf(which);
        askEach(state, queriesOf(inputs).neighbours, [&inputs](Queries::Neighbours const& neighbours) {
            return inputs.interpolated(neighbours);
        });
    };

    bool const isEven = which.spacing == Spacing::Even;
    Baseline mapBaseline{timedLoop("std::map", name + "/map", work, map)};
    Baseline bareBaseline{timedLoop("bare interpolate", name + "/interpolate", work, bare),
                          Ratio::TimesTheTime};
    if (!ascending && isMillion && isEven) {
        mapBaseline.target = 2.5;
    }
    if (ascending && which.poses == 20'000) {
        bareBaseline.target = 1.3;
    }
    Comparison comparison{"One pose of a trajectory at a time",
                          order + " times, " + withCommas(which.poses) + " poses, " + nameOf(which.spacing),
                          nanoseconds,
                          repetitions,
                          timedLoop("sample", name + "/trajectory", work, ours),
                          {std::move(mapBaseline), std::move(bareBaseline)}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    if (isEven) {
        comparison.baselines.push_back(tf2Baseline(which, ascending, name));
    }
#endif
    return comparison;
}

} // namespace

std::vector<Comparison> poseSamplingBenchmarks()
{
    std::vector<Comparison> comparisons;
    for (std::size_t const poses : {1'000U, 20'000U, 1'000'000U}) {
        for (Spacing const spacing : {Spacing::Even, Spacing::Random, Spacing::Bursts}) {
            comparisons.push_back(compareSampling({poses, spacing}, false));
            comparisons.push_back(compareSampling({poses, spacing}, true));
        }
    }
    return comparisons;
}

} // namespace bench
