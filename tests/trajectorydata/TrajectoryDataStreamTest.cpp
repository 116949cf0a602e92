#include "tests/support/Bits.h"
#include "tests/support/ByteStrings.h"
#include "tests/support/StoreStreams.h"
#include "tests/support/TrajectoryStreams.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;
using namespace support;

using Matrix = Eigen::Matrix3d;

TEST(TrajectoryDataStream, SmallStoreReadsBackFromItsLiteralBytes)
{
    auto const store = readBack<TrajectoryData>(smallTrajectoryStream());
    ASSERT_NE(store, nullptr);
    expectSame(*store, smallTrajectoryStore());
    EXPECT_EQ(store->nodes[0].pose.rotation().w(), 4);
    EXPECT_EQ(store->nodes[0].matrixA(2, 0), 13) << "matrices lie by columns";
    EXPECT_EQ(store->devicePositions.at(Device::Device2).rotation().z(), 37);
}

TEST(TrajectoryDataStream, RoundTripKeepsEveryBit)
{
    TrajectoryData const store = randomTrajectoryStore(1000, 80);
    auto const back = readBack<TrajectoryData>(written(store));
    ASSERT_NE(back, nullptr);
    expectSame(*back, store);
}

TEST(TrajectoryDataStream, RoundTripKeepsNaNsInfinitiesAndMinusZero)
{
    double const nanWithPayload = std::bit_cast<double>(std::uint64_t{0x7FF8000000012345U});
    double const infinity = std::numeric_limits<double>::infinity();
    TrajectoryData store;
    store.nodes.emplace_back(nanWithPayload,
                             TrafoT<double>(Eigen::Vector3d(-0.0, infinity, -infinity),
                                            Eigen::Quaterniond(nanWithPayload, -0.0, 5e-324, 1e308),
                                            true),
                             static_cast<TrajectoryNode::Type>(0xFFFFFFFFU),
                             Matrix::Constant(nanWithPayload),
                             Matrix::Constant(-0.0),
                             false);
    auto const back = readBack<TrajectoryData>(written(store));
    ASSERT_NE(back, nullptr);
    expectSame(*back, store);
}

TEST(TrajectoryDataStream, TimeOfMinusZeroEqualsTheDefaultAndReadsBackAsZero)
{
    TrajectoryData zero;
    zero.nodes.emplace_back(0.0);
    TrajectoryData minusZero;
    minusZero.nodes.emplace_back(-0.0);
    EXPECT_EQ(written(minusZero), written(zero));
    auto const back = readBack<TrajectoryData>(written(minusZero));
    ASSERT_NE(back, nullptr);
    EXPECT_FALSE(std::signbit(back->nodes[0].time));
}

TEST(TrajectoryDataStream, ValidityOfAPoseIsNotStoredAndReadsBackAsValid)
{
    TrajectoryData store;
    store.nodes.emplace_back(1.0,
                             TrafoT<double>(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond::Identity(), false));
    store.devicePositions[Device::Device0] =
        TrafoT<double>(Eigen::Vector3d(4, 5, 6), Eigen::Quaterniond::Identity(), false);
    auto const back = readBack<TrajectoryData>(written(store));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->nodes[0].pose.valid());
    EXPECT_EQ(back->nodes[0].pose.translation(), Eigen::Vector3d(1, 2, 3));
    EXPECT_TRUE(back->devicePositions.at(Device::Device0).valid());
}

TEST(TrajectoryDataStream, NodeAtTheDefaultsOfTheFormatHasNoneOfThoseFields)
{
    TrajectoryData store;
    store.nodes.emplace_back(0.0,
                             TrafoT<double>::Identity(),
                             TrajectoryNode::Type::Default,
                             Matrix::Constant(1),
                             Matrix::Constant(2),
                             false);
    std::string const bytes = written(store);
    // Its vtable ends at matrixB: 14 bytes, a table of 204; time, pose, type, matrixA and matrixB, 0 for
    // absent.
    EXPECT_NE(bytes.find(u16(14) + u16(204) + u16(0) + u16(4) + u16(0) + u16(60) + u16(132)),
              std::string::npos);
    EXPECT_LT(bytes.size(), smallTrajectoryStream().size() - 8);
    auto const back = readBack<TrajectoryData>(bytes);
    ASSERT_NE(back, nullptr);
    expectSame(*back, store);
    EXPECT_FALSE(back->nodes[0].flag) << "absent means false, although a default node's flag is true";
}

TEST(TrajectoryDataStream, StoreWithOnlyNodesOrOnlyDevicesReadsBack)
{
    TrajectoryData nodes = randomTrajectoryStore(5, 81);
    nodes.devicePositions.clear();
    TrajectoryData devices = randomTrajectoryStore(0, 82);
    for (TrajectoryData const& store : {nodes, devices}) {
        auto const back = readBack<TrajectoryData>(written(store));
        ASSERT_NE(back, nullptr);
        expectSame(*back, store);
    }
}

TEST(TrajectoryDataStream, ReadReplacesFormerNodesAndDevices)
{
    TrajectoryData store = randomTrajectoryStore(10, 85);
    std::istringstream stream(smallTrajectoryStream());
    ASSERT_TRUE(store.readFromStream(stream));
    expectSame(store, smallTrajectoryStore());
}

TEST(TrajectoryDataStream, NodeWithoutItsPoseIsRefused)
{
    expectRefused<TrajectoryFormat>(withU16(smallTrajectoryStream(), nodePoseEntry, 0));
}

TEST(TrajectoryDataStream, NodeWithoutAMatrixIsRefused)
{
    expectRefused<TrajectoryFormat>(withU16(smallTrajectoryStream(), matrixAEntry, 0));
    expectRefused<TrajectoryFormat>(withU16(smallTrajectoryStream(), matrixBEntry, 0));
}

TEST(TrajectoryDataStream, LengthThatCannotBeReadLeavesTheStore)
{
    std::istringstream stream(smallTrajectoryStream().replace(0, 8, u64(std::uint64_t{1} << 40)));
    TrajectoryData const before = randomTrajectoryStore(3, 87);
    TrajectoryData store(before);
    try {
        EXPECT_FALSE(store.readFromStream(stream)); // where the allocator hands out address space
        EXPECT_FALSE(stream.good());
    } catch (std::bad_alloc const&) {
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(stream.tellg(), 8);
    }
    expectSame(store, before);
}

TEST(TrajectoryDataStream, LengthErrorLeavesTheStore)
{
    for (std::uint64_t const count : {std::uint64_t{1} << 63, std::numeric_limits<std::uint64_t>::max()}) {
        std::istringstream stream(smallTrajectoryStream().replace(0, 8, u64(count)));
        TrajectoryData const before = randomTrajectoryStore(3, 88);
        TrajectoryData store(before);
        EXPECT_THROW((void)store.readFromStream(stream), std::length_error);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(stream.tellg(), 8);
        expectSame(store, before);
    }
}

TEST(TrajectoryDataStream, ExceptionsEnabledOnTheStreamLeaveTheStore)
{
    std::string const bytes = smallTrajectoryStream();
    for (std::size_t const length : {std::size_t{4}, std::size_t{100}}) {
        std::istringstream stream(bytes.substr(0, length));
        stream.exceptions(std::ios::failbit);
        TrajectoryData const before = randomTrajectoryStore(3, 89);
        TrajectoryData store(before);
        EXPECT_THROW((void)store.readFromStream(stream), std::ios::failure);
        expectSame(store, before);
    }
}

// Contents that share tables

// A stream whose nodes are all the same table: `count` offsets before the node of smallTrajectoryStream().
std::string streamOfSharedNodes(std::uint32_t count)
{
    std::string const single = smallTrajectoryStream();
    std::string const node = single.substr(nodeVtable); // vtable and table; its doubles lie at multiples of 8
    std::string buffer = u32(12) + u16(6) + u16(8) + u16(4) +
                         u16(0)   // root at 12, its vtable at 4, nodes only
                         + u32(8) // 12 root
                         + u32(4) // 16 nodes at 20
                         + u32(count);
    std::size_t const offsetsBegin = buffer.size();
    std::size_t nodeBegin = offsetsBegin + 4 * std::size_t{count};
    nodeBegin += (8 - nodeBegin % 8) % 8;
    for (std::uint32_t i = 0; i < count; ++i) {
        buffer += u32(static_cast<std::uint32_t>(nodeBegin + 16 - (offsetsBegin + 4 * std::size_t{i})));
    }
    buffer.resize(nodeBegin, '\0');
    return lengthPrefixed(buffer + node);
}

TEST(TrajectoryDataStream, NodesMayShareATable)
{
    auto const store = readBack<TrajectoryData>(streamOfSharedNodes(10));
    ASSERT_NE(store, nullptr);
    ASSERT_EQ(store->nodes.size(), 10U);
    for (auto const& node : store->nodes) {
        EXPECT_EQ(node.time, 1.5);
        EXPECT_TRUE(sameBits(node.pose, numberedNode().pose));
    }
}

TEST(TrajectoryDataStream, AnyNumberOfNodesUpToTheTableLimitMayShareATable)
{
    // 256 bytes each in memory, so 244 MiB together; the buffer is 4 MB.
    static_assert(sizeof(TrajectoryNode) == 256);
    for (std::uint32_t const count : {30U, 999999U}) {
        auto const store = readBack<TrajectoryData>(streamOfSharedNodes(count));
        ASSERT_NE(store, nullptr);
        EXPECT_EQ(store->nodes.size(), count);
    }
}

TEST(TrajectoryDataStream, OneMillionNodesAreWrittenButOnlyOneFewerReadBack)
{
    TrajectoryData store;
    store.nodes.resize(1000000);
    std::string bytes = written(store);
    EXPECT_EQ(readBack<TrajectoryData>(bytes), nullptr);
    store.nodes.pop_back();
    bytes = written(store);
    auto const back = readBack<TrajectoryData>(bytes);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->nodes.size(), 999999U);
}

TEST(TrajectoryDataStream, DifferentStoresMayBeWrittenAndReadConcurrently)
{
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (std::uint64_t seed = 91; seed < 95; ++seed) {
        threads.emplace_back([store = randomTrajectoryStore(20, seed), &failures] {
            for (int round = 0; round < 20; ++round) {
                auto const back = readBack<TrajectoryData>(written(store));
                bool const same = back != nullptr && back->nodes.size() == store.nodes.size() &&
                                  sameBits(back->nodes[19].pose, store.nodes[19].pose);
                failures += same ? 0 : 1;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, 0);
}

} // namespace
