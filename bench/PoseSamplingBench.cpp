/// @file
/// The pose of a trajectory at a time, one or many in a call, against an ordered map, against the
/// interpolation only, and against tf2.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/baselines/Tf2Lookup.h"
#include "bench/workload/Walk.h"
#include "tests/support/MapPoseFunction.h"

#include <roamscan/trajectory/SampleMany.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <functional>
#include <span>
#include <stdexcept>
#include <utility>

namespace bench
{

namespace
{

using oV::Roamscan::TimeStamp;
using oV::Roamscan::Trajectory;

struct Case
{
    std::size_t poses;
    Spacing spacing;
    bool ascending;
    std::size_t queries;

    bool operator==(Case const&) const = default;
};

// The same poses in each form that is measured, and the queries.
struct SamplingInput
{
    explicit SamplingInput(Case const& which)
    {
        auto const nodes = makeNodes(which.poses, which.spacing);
        support::MapPoseFunction plain;
        for (auto const& node : nodes) {
            poses.push_back(node.pose);
            plain.poses[TimeStamp(node.time)] = node.pose;
        }
        map = std::move(plain);
        trajectory = oV::Roamscan::buildTrajectoryFromTrajectoryNodes(nodes);
        queries = makeQueries(nodes, which.queries, which.ascending);
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
        if (which.spacing == Spacing::Even) {
            std::vector<std::pair<double, FlatPose>> timedPoses;
            for (auto const& node : nodes) {
                timedPoses.emplace_back(node.time, node.pose.serialize());
            }
            tf2 = makeTf2Lookup(timedPoses);
        }
#endif
        // Only methods that give the same poses can be compared.
        for (std::size_t i = 0; i < queries.size(); i += 101) {
            auto const pose = trajectory.sample(queries[i].time).serialize();
            if (pose != map(queries[i].time).serialize() || pose != interpolated(queries[i]).serialize()) {
                throw std::logic_error("trajectory, map and interpolation differ");
            }
        }
    }

    [[nodiscard]] Pose interpolated(Query const& query) const
    {
        return poses[query.lower].interpolate(poses[query.lower + 1], query.fraction);
    }

    std::vector<Pose> poses;
    Trajectory::PoseFunction map;
    Trajectory trajectory;
    std::function<FlatPose(double)> tf2; // with other libraries, over even poses
    std::vector<Query> queries;
};

// Measures `pose` on each query of a case.
Function sampling(Case const& which, auto pose)
{
    return [which, pose](benchmark::State& state) {
        auto const& input = inputFor<SamplingInput>(which);
        measureEach(state, input.queries, [&](Query const& query) { return pose(input, query); });
    };
}

constexpr auto sample = [](SamplingInput const& input, Query const& query) {
    return input.trajectory.sample(query.time);
};
constexpr auto map = [](SamplingInput const& input, Query const& query) { return input.map(query.time); };
constexpr auto bare = [](SamplingInput const& input, Query const& query) {
    return input.interpolated(query);
};

std::vector<double> timesOf(SamplingInput const& input)
{
    std::vector<double> times;
    for (Query const& query : input.queries) {
        times.push_back(query.time);
    }
    return times;
}

// The poses of all queries of a case, stored one after the other by `store`.
Function storingAll(Case const& which, auto store)
{
    return [which, store](benchmark::State& state) {
        auto const& input = inputFor<SamplingInput>(which);
        std::vector<double> const times = timesOf(input);
        std::vector<Pose> poses(times.size());
        store(input, times, poses);
        for (std::size_t i = 0; i < times.size(); i += 101) {
            if (poses[i].serialize() != input.trajectory.sample(times[i]).serialize()) {
                throw std::logic_error("one pose and many poses in one call differ");
            }
        }
        measureEach(state, std::span(&times, 1), [&](auto const& all) {
            store(input, all, poses);
            return poses.data();
        });
        state.SetItemsProcessed(state.iterations() * std::ssize(times));
    };
}

constexpr auto inOneCall = [](SamplingInput const& input, auto const& times, std::vector<Pose>& poses) {
    oV::Roamscan::samplePoses(input.trajectory, times, poses);
};
constexpr auto inALoop = [](SamplingInput const& input, auto const& times, std::vector<Pose>& poses) {
    for (std::size_t i = 0; i < times.size(); ++i) {
        poses[i] = input.trajectory.sample(times[i]);
    }
};

Figure samplingFigure(std::string const& name, Case const& which)
{
    bool const isEven = which.spacing == Spacing::Even;
    using Target = std::optional<double>;
    Target const mapTarget =
        !which.ascending && which.poses == 1'000'000 && isEven ? Target(2.5) : std::nullopt;
    Target const bareTarget = which.ascending && which.poses == 20'000 ? Target(1.3) : std::nullopt;
    Figure figure{name,
                  nanoseconds,
                  {"sample", sampling(which, sample)},
                  {{"std::map", sampling(which, map), timesAsFast, mapTarget},
                   {"bare interpolate", sampling(which, bare), timesTheTime, bareTarget}}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    if (isEven) {
        auto const tf2 = [](SamplingInput const& input, Query const& query) { return input.tf2(query.time); };
        figure.baselines.push_back({"tf2 lookup", sampling(which, tf2)});
    }
#endif
    return figure;
}

} // namespace

Group poseSampling()
{
    Group group{"One pose of a trajectory at a time", Cost::ProcessorTime, {}};
    using Sizes = std::pair<std::size_t, std::string>;
    using Spacings = std::pair<Spacing, std::string>;
    for (auto const& [poses, count] : {Sizes{1'000, "1,000"}, {20'000, "20,000"}, {1'000'000, "1,000,000"}}) {
        for (auto const& [spacing, gaps] :
             {Spacings{Spacing::Even, "even"}, {Spacing::Random, "random gaps"}, {Spacing::Bursts, "bursts"}})
        {
            std::string const rest = std::string(" times, ").append(count).append(" poses, ").append(gaps);
            bool const isLong = poses == 1'000'000;
            group.figures.push_back(
                samplingFigure("random" + rest, {poses, spacing, false, isLong ? 400'000U : 100'000U}));
            group.figures.push_back(
                samplingFigure("ascending" + rest, {poses, spacing, true, isLong ? 1'000'000U : 100'000U}));
        }
    }
    return group;
}

Group manyPoses()
{
    Case const ascending{20'000, Spacing::Even, true, 1'000'000};
    Case const random{20'000, Spacing::Even, false, 1'000'000};
    return {"Many poses of a trajectory in one call",
            Cost::ProcessorTime,
            {{"1,000,000 ascending times, 20,000 poses, even",
              nanoseconds,
              {"samplePoses", storingAll(ascending, inOneCall)},
              {{"bare interpolate", sampling(ascending, bare), timesTheTime, 0.65}}},
             {"1,000,000 random times, 20,000 poses, even",
              nanoseconds,
              {"samplePoses", storingAll(random, inOneCall)},
              {{"sample in a loop", storingAll(random, inALoop), timesTheTime, 1.0}}}}};
}

} // namespace bench
