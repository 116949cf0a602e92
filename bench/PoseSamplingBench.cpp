/// @file
/// The pose of a trajectory at a time, against an ordered map, against the interpolation only, and against
/// tf2.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/Walk.h"
#include "tests/support/MapPoseFunction.h"

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "bench/baselines/Tf2Buffer.h"
#endif

#include <stdexcept>

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

    bool operator==(Case const&) const = default;

    [[nodiscard]] std::string name() const
    {
        return (ascending ? "ascending times, " : "random times, ") + withCommas(poses) + " poses, " +
               nameOf(spacing);
    }

    [[nodiscard]] std::size_t queryCount() const
    {
        if (poses < 1'000'000) {
            return 100'000;
        }
        return ascending ? 1'000'000 : 400'000;
    }
};

// The same poses in each form that is measured, and the queries.
struct Input
{
    explicit Input(Case const& which) : walk(makeWalk(which.poses, which.spacing))
    {
        support::MapPoseFunction plain;
        for (std::size_t i = 0; i < walk.times.size(); ++i) {
            plain.poses[TimeStamp(walk.times[i])] = walk.poses[i];
        }
        map = std::move(plain);
        trajectory = oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(which.poses, which.spacing));
        queries = makeQueries(walk.times, which.queryCount(), which.ascending);
        requireAgreement();
    }

    [[nodiscard]] Pose interpolated(Query const& query) const
    {
        return walk.poses[query.lower].interpolate(walk.poses[query.lower + 1], query.fraction);
    }

    // Only methods that give the same poses can be compared.
    void requireAgreement() const
    {
        for (std::size_t i = 0; i < queries.size(); i += 101) {
            auto const pose = trajectory.sample(queries[i].time).serialize();
            if (pose != map(queries[i].time).serialize() || pose != interpolated(queries[i]).serialize()) {
                throw std::logic_error("trajectory, map and interpolation differ");
            }
        }
    }

    Walk walk;
    Trajectory::PoseFunction map;
    Trajectory trajectory;
    std::vector<Query> queries;
};

// Measures `pose` on each query of a case.
Function sampling(Case const& which, auto pose)
{
    return [which, pose](benchmark::State& state) {
        auto const& input = inputFor<Input>(which);
        measureEach(state, input.queries, [&](Query const& query) { return pose(input, query); });
    };
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
struct Tf2Input
{
    explicit Tf2Input(Case const& which)
    {
        auto const& input = inputFor<Input>(which);
        std::vector<Tf2Buffer::FlatPose> poses;
        for (Pose const& pose : input.walk.poses) {
            poses.push_back(pose.serialize());
        }
        buffer = std::make_unique<Tf2Buffer>(input.walk.times, poses);
        constexpr std::size_t count = 100'000; // of the queries, as tf2 is slow
        for (std::size_t i = 0; i < count; ++i) {
            times.push_back(input.queries[i * (input.queries.size() / count)].time);
        }
    }

    std::unique_ptr<Tf2Buffer> buffer;
    std::vector<double> times;
};

Function tf2Sampling(Case const& which)
{
    return [which](benchmark::State& state) {
        auto const& input = inputFor<Tf2Input>(which);
        measureEach(state, input.times, [&input](double time) { return input.buffer->sample(time); });
    };
}
#endif

Figure samplingFigure(Case const& which)
{
    auto const ours = [](Input const& input, Query const& query) {
        return input.trajectory.sample(query.time);
    };
    auto const map = [](Input const& input, Query const& query) { return input.map(query.time); };
    auto const bare = [](Input const& input, Query const& query) { return input.interpolated(query); };

    bool const isEven = which.spacing == Spacing::Even;
    std::optional<double> mapTarget;
    std::optional<double> bareTarget;
    if (!which.ascending && which.poses == 1'000'000 && isEven) {
        mapTarget = 2.5;
    }
    if (which.ascending && which.poses == 20'000) {
        bareTarget = 1.3;
    }
    Figure figure{which.name(),
                  nanoseconds,
                  {"sample", sampling(which, ours)},
                  {{"std::map", sampling(which, map), Ratio::TimesAsFast, mapTarget},
                   {"bare interpolate", sampling(which, bare), Ratio::TimesTheTime, bareTarget}}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    if (isEven) {
        figure.baselines.push_back(otherLibrary("tf2 lookup", tf2Sampling(which)));
    }
#endif
    return figure;
}

} // namespace

Group poseSampling()
{
    Group group{"One pose of a trajectory at a time", Cost::ProcessorTime, {}};
    for (std::size_t const poses : {1'000U, 20'000U, 1'000'000U}) {
        for (Spacing const spacing : {Spacing::Even, Spacing::Random, Spacing::Bursts}) {
            for (bool const ascending : {false, true}) {
                group.figures.push_back(samplingFigure({poses, spacing, ascending}));
            }
        }
    }
    return group;
}

} // namespace bench
