#include "tests/support/Bits.h"
#include "tests/support/PoseAt.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;
using support::at;
using support::RandomPoses;
using support::sameBits;

TrajectoryData smallStore()
{
    TrajectoryData store;
    store.nodes.emplace_back(1.0, at(10));
    store.nodes.emplace_back(2.0, at(20));
    store.devicePositions[Device::Device1] = at(1);
    return store;
}

TEST(Device, HasItsValuesIn32Bits)
{
    static_assert(sizeof(Device) == 4);
    EXPECT_EQ(static_cast<int>(Device::Device0), 0);
    EXPECT_EQ(static_cast<int>(Device::Device1), 1);
    EXPECT_EQ(static_cast<int>(Device::Device2), 2);
    EXPECT_EQ(static_cast<int>(Device::Device3), 3);
    EXPECT_EQ(static_cast<int>(Device::DeviceUnknown), 1000);
}

TEST(TrajectoryData, DefaultConstructedIsEmpty)
{
    TrajectoryData const store;
    EXPECT_TRUE(store.nodes.empty());
    EXPECT_TRUE(store.devicePositions.empty());
}

TEST(TrajectoryData, CopiesAreIndependent)
{
    TrajectoryData const source = smallStore();
    TrajectoryData copy(source);
    copy.devicePositions[Device::Device2] = at(2);
    copy.devicePositions[Device::Device1] = at(100);
    copy.nodes.pop_back();
    EXPECT_EQ(source.devicePositions.size(), 1U);
    EXPECT_TRUE(sameBits(source.devicePositions.at(Device::Device1), at(1)));
    EXPECT_EQ(source.nodes.size(), 2U);

    TrajectoryData assigned;
    assigned = source;
    assigned.nodes.clear();
    EXPECT_EQ(source.nodes.size(), 2U);
    EXPECT_EQ(assigned.devicePositions.size(), 1U);
}

TEST(TrajectoryData, AssignmentToItselfChangesNothing)
{
    TrajectoryData store = smallStore();
    TrajectoryData const& same = store;
    store = same;
    EXPECT_EQ(store.nodes.size(), 2U);
    EXPECT_EQ(store.devicePositions.size(), 1U);
}

// The moved-from state is part of the contract.
// NOLINTBEGIN(bugprone-use-after-move,performance-move-const-arg)
TEST(TrajectoryData, MovedFromIsCopied)
{
    TrajectoryData source = smallStore();
    TrajectoryData const copy(std::move(source));
    EXPECT_EQ(source.nodes.size(), 2U);
    EXPECT_EQ(copy.nodes.size(), 2U);
    TrajectoryData assigned;
    assigned = std::move(source);
    EXPECT_EQ(source.nodes.size(), 2U);
    EXPECT_EQ(assigned.nodes.size(), 2U);
}
// NOLINTEND(bugprone-use-after-move,performance-move-const-arg)

TEST(TrajectoryData, HasNoVirtualOperations)
{
    static_assert(!std::is_polymorphic_v<TrajectoryData>);
    SUCCEED();
}

TEST(TrajectoryData, DerivesTheTrajectoryBetweenTwoDevices)
{
    RandomPoses random(60);
    TrajectoryData store;
    auto const from = random.pose();
    auto const to = random.pose();
    store.devicePositions[Device::Device2] = from;
    store.devicePositions[Device::Device3] = to;
    for (int i = 0; i < 10; ++i) {
        store.nodes.emplace_back(i, random.pose());
    }
    Trajectory const trajectory = store.buildTrajectoryFromTrajectoryNodes(Device::Device2, Device::Device3);
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(9));
    EXPECT_TRUE(sameBits(trajectory.sample(9.0), (to.inverse() * store.nodes[9].pose) * from));
    for (auto const& node : store.nodes) {
        EXPECT_TRUE(trajectory.sample(node.time) == (to.inverse() * node.pose) * from);
    }
}

TEST(TrajectoryData, DerivesTheTrajectoryOfOneDeviceAsFromItToItself)
{
    RandomPoses random(61);
    TrajectoryData store;
    store.devicePositions[Device::Device0] = random.pose();
    for (int i = 0; i < 10; ++i) {
        store.nodes.emplace_back(i, random.pose());
    }
    Trajectory const one = store.buildTrajectoryFromTrajectoryNodes(Device::Device0);
    Trajectory const two = store.buildTrajectoryFromTrajectoryNodes(Device::Device0, Device::Device0);
    for (double time = 0; time < 9; time += 0.1) {
        EXPECT_TRUE(sameBits(one.sample(time), two.sample(time)));
    }
}

TEST(TrajectoryData, DevicePositionsOfAnyKeyAreUsed)
{
    TrajectoryData store = smallStore();
    store.devicePositions[Device::DeviceUnknown] = at(3);
    EXPECT_NO_THROW((void)store.buildTrajectoryFromTrajectoryNodes(Device::DeviceUnknown, Device::Device1));
}

void expectMissing(auto const& build, wchar_t const* message)
{
    try {
        (void)build();
        FAIL() << "nothing was thrown";
    } catch (oV::InternalErrorException const& failure) {
        EXPECT_EQ(failure.getDesc().compare(message), 0);
        EXPECT_EQ(failure.getFunction().compare(
                      L"oV::Roamscan::TrajectoryData::buildTrajectoryFromTrajectoryNodes"),
                  0);
        EXPECT_EQ(failure.getFile().compare(L"TrajectoryData"), 0);
        EXPECT_GT(failure.getLine(), 0U);
    }
}

constexpr wchar_t const* noFrom = L"Cannot build trajectory without from device position.";
constexpr wchar_t const* noTo = L"Cannot build trajectory without to device position.";

TEST(TrajectoryData, MissingFromPositionThrows)
{
    auto const store = smallStore();
    expectMissing([&] { return store.buildTrajectoryFromTrajectoryNodes(Device::Device0, Device::Device1); },
                  noFrom);
}

TEST(TrajectoryData, MissingToPositionThrows)
{
    auto const store = smallStore();
    expectMissing([&] { return store.buildTrajectoryFromTrajectoryNodes(Device::Device1, Device::Device0); },
                  noTo);
}

TEST(TrajectoryData, WithBothPositionsMissingFromIsReported)
{
    auto const store = smallStore();
    expectMissing([&] { return store.buildTrajectoryFromTrajectoryNodes(Device::Device0, Device::Device2); },
                  noFrom);
}

TEST(TrajectoryData, SingleDeviceFormReportsTheMissingTarget)
{
    auto const store = smallStore();
    expectMissing([&] { return store.buildTrajectoryFromTrajectoryNodes(Device::Device0); }, noTo);
}

} // namespace
