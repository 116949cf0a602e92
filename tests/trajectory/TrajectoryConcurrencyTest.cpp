#include "tests/support/Bits.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/Trajectory.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace
{

using oV::Roamscan::Duration;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::Trajectory;

TEST(TrajectoryConcurrency, ManyThreadsSampleIterateAndCopyOneTrajectory)
{
    support::RandomPoses random(30);
    InterpolatedTrajectoryPathBuilder builder;
    for (int i = 0; i < 500; ++i) {
        builder.addPose(Duration(0.01), random.pose());
    }
    Trajectory const trajectory = builder.build();
    std::vector<oV::Roamscan::TrafoT<double>> expected;
    for (auto const& node : trajectory.sampled(Duration(0.003))) {
        expected.push_back(node.pose);
    }

    std::atomic<int> differences = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            Trajectory const copy(trajectory);
            std::size_t index = 0;
            for (auto const& node : trajectory.sampled(Duration(0.003))) {
                differences += support::sameBits(node.pose, expected[index]) ? 0 : 1;
                differences += support::sameBits(copy.sample(node.time), expected[index]) ? 0 : 1;
                ++index;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(differences, 0);
}

} // namespace
