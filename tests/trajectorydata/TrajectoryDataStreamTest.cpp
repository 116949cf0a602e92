#include "tests/support/Bits.h"
#include "tests/support/ByteStrings.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/log/LogMessage.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/frame/values/Endianness.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;
using namespace support;

using Matrix = Eigen::Matrix3d;

std::string written(TrajectoryData const& store)
{
    std::ostringstream stream(std::ios::binary);
    EXPECT_TRUE(store.write(stream));
    return stream.str();
}

std::shared_ptr<TrajectoryData> readBack(std::string const& frame)
{
    std::istringstream stream(frame, std::ios::binary);
    return TrajectoryData::read(stream);
}

// Stores

TrajectoryNode numberedNode()
{
    TrajectoryNode node(1.5,
                        TrafoT<double>(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond(4, 5, 6, 7), true),
                        static_cast<TrajectoryNode::Type>(0xA0B0C0D0U),
                        Matrix::Zero(),
                        Matrix::Zero(),
                        true);
    for (int i = 0; i < 9; ++i) {
        node.matrixA.data()[i] = 11 + i;
        node.matrixB.data()[i] = 21 + i;
    }
    return node;
}

TrajectoryData oneNodeAndOneDevice()
{
    TrajectoryData store;
    store.nodes.push_back(numberedNode());
    store.devicePositions[Device::Device2] =
        TrafoT<double>(Eigen::Vector3d(31, 32, 33), Eigen::Quaterniond(34, 35, 36, 37), true);
    return store;
}

TrajectoryData randomStore(int nodes, std::uint64_t seed)
{
    support::RandomPoses random(seed);
    TrajectoryData store;
    for (int i = 0; i < nodes; ++i) {
        store.nodes.emplace_back(random.number(-1e9, 1e9),
                                 random.pose(),
                                 static_cast<TrajectoryNode::Type>(i * 77777),
                                 Matrix::Random(),
                                 Matrix::Random(),
                                 i % 3 == 0);
    }
    for (Device const device : {Device::Device0, Device::Device1, Device::Device2, Device::Device3}) {
        store.devicePositions[device] = random.pose();
    }
    return store;
}

void expectSame(TrajectoryData const& actual, TrajectoryData const& expected)
{
    ASSERT_EQ(actual.nodes.size(), expected.nodes.size());
    for (std::size_t i = 0; i < actual.nodes.size(); ++i) {
        auto const& a = actual.nodes[i];
        auto const& b = expected.nodes[i];
        ASSERT_TRUE(sameBits(a.pose, b.pose)) << "node " << i;
        ASSERT_EQ(support::bits(a.time), support::bits(b.time)) << "node " << i;
        ASSERT_EQ(a.type, b.type) << "node " << i;
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): every bit counts, also those of NaNs
        ASSERT_EQ(std::memcmp(a.matrixA.data(), b.matrixA.data(), 72), 0) << "node " << i;
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): every bit counts, also those of NaNs
        ASSERT_EQ(std::memcmp(a.matrixB.data(), b.matrixB.data(), 72), 0) << "node " << i;
        ASSERT_EQ(a.flag, b.flag) << "node " << i;
    }
    ASSERT_EQ(actual.devicePositions.size(), expected.devicePositions.size());
    for (auto const& [device, pose] : expected.devicePositions) {
        ASSERT_TRUE(actual.devicePositions.contains(device));
        ASSERT_TRUE(sameBits(actual.devicePositions.at(device), pose));
    }
}

// The log, empty at first

class TrajectoryDataStream : public testing::Test
{
protected:
    TrajectoryDataStream() { oV::Models::the().clearLog(); }

    static std::vector<std::string> loggedTexts()
    {
        std::vector<std::string> texts;
        for (auto const& message : oV::Models::the().logMessages()) {
            texts.emplace_back(message.message.stringAnsi());
        }
        return texts;
    }
};

// Literal bytes

std::string const emptyFrame = bytes({
    0x0C, 0, 0,    0, 0, 0, 0, 0, // 12 bytes follow
    0x08, 0, 0,    0,             // the root table lies at 8
    0x04, 0, 0x04, 0,             // its vtable: 4 bytes, a table of 4 bytes, no fields
    0x04, 0, 0,    0,             // the root table: its vtable lies 4 before it
});

// The frame of oneNodeAndOneDevice(). Offsets count from the buffer's beginning, behind the count.
std::string frameOfOneNodeAndOneDevice()
{
    return u64(344)                             // 344 bytes follow
           + u32(16)                            //   0 the root table lies at 16
           + u32(0)                             //   4 (nothing, so that doubles lie on multiples of 8)
           + u16(8) + u16(12) + u16(4) + u16(8) //   8 root's vtable: 8 bytes, table of 12, fields at 4 and 8
           + u32(8)                             //  16 the root table: its vtable lies 8 before it
           + u32(76)                            //  20 nodes at 20 + 76
           + u32(4)                             //  24 devicePositions at 24 + 4
           + u32(1)                             //  28 one device
           + u32(2) + u32(0)                    //  32 Device2, four bytes of nothing
           + f64({31, 32, 33})                  //  40 translation x, y, z
           + f64({34, 35, 36, 37})              //  64 rotation w, x, y, z
           + u32(1)                             //  96 one node
           + u32(20)                            // 100 at 100 + 20
           + u16(16) + u16(224)                 // 104 its vtable: 16 bytes, table of 224, then the places of
           + u16(216) + u16(8) + u16(68)        // 108 time, pose, type,
           + u16(72) + u16(144) + u16(7)        // 114 matrixA, matrixB, flag
           + u32(16)                            // 120 the node: its vtable lies 16 before it
           + bytes({0, 0, 0, 1})                // 124 (nothing), flag
           + f64({1, 2, 3})                     // 128 translation x, y, z
           + f64({4, 5, 6, 7})                  // 152 rotation w, x, y, z
           + u32(0)                             // 184 (nothing)
           + u32(0xA0B0C0D0U)                   // 188 type
           + f64({11, 12, 13, 14, 15, 16, 17, 18, 19}) // 192 matrixA by columns
           + f64({21, 22, 23, 24, 25, 26, 27, 28, 29}) // 264 matrixB by columns
           + f64({1.5});                               // 336 time
}

// Where things stand in that frame, the count included.
constexpr std::size_t nodeVtable = 8 + 104;
constexpr std::size_t poseEntry = nodeVtable + 6;
constexpr std::size_t matrixAEntry = nodeVtable + 10;
constexpr std::size_t matrixBEntry = nodeVtable + 12;
constexpr std::size_t deviceValue = 8 + 32;
constexpr std::size_t devicePadding = deviceValue + 4;

TEST_F(TrajectoryDataStream, AnEmptyStoreIsARootTableWithoutFields)
{
    EXPECT_EQ(written(TrajectoryData()), emptyFrame);
}

TEST_F(TrajectoryDataStream, TheEmptyFrameReadsAsAnEmptyStore)
{
    auto const store = readBack(emptyFrame);
    ASSERT_NE(store, nullptr);
    EXPECT_TRUE(store->nodes.empty());
    EXPECT_TRUE(store->devicePositions.empty());
}

TEST_F(TrajectoryDataStream, OneNodeAndOneDeviceAreTheseBytes)
{
    EXPECT_EQ(written(oneNodeAndOneDevice()), frameOfOneNodeAndOneDevice());
}

TEST_F(TrajectoryDataStream, TheseBytesReadAsOneNodeAndOneDevice)
{
    auto const store = readBack(frameOfOneNodeAndOneDevice());
    ASSERT_NE(store, nullptr);
    expectSame(*store, oneNodeAndOneDevice());
    EXPECT_EQ(store->nodes[0].pose.rotation().w(), 4);
    EXPECT_EQ(store->nodes[0].matrixA(2, 0), 13) << "matrices lie by columns";
    EXPECT_EQ(store->devicePositions.at(Device::Device2).rotation().z(), 37);
}

// Round trips

TEST_F(TrajectoryDataStream, ARoundTripKeepsEveryBit)
{
    TrajectoryData const store = randomStore(1000, 80);
    auto const back = readBack(written(store));
    ASSERT_NE(back, nullptr);
    expectSame(*back, store);
}

TEST_F(TrajectoryDataStream, NaNsInfinitiesAndMinusZeroSurvive)
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
    auto const back = readBack(written(store));
    ASSERT_NE(back, nullptr);
    expectSame(*back, store);
}

TEST_F(TrajectoryDataStream, ATimeOfMinusZeroEqualsItsDefaultAndReadsBackAsZero)
{
    TrajectoryData zero;
    zero.nodes.emplace_back(0.0);
    TrajectoryData minusZero;
    minusZero.nodes.emplace_back(-0.0);
    EXPECT_EQ(written(minusZero), written(zero));
    auto const back = readBack(written(minusZero));
    ASSERT_NE(back, nullptr);
    EXPECT_FALSE(std::signbit(back->nodes[0].time));
}

TEST_F(TrajectoryDataStream, TheFlagOfAPoseIsNotStoredAndComesBackValid)
{
    TrajectoryData store;
    store.nodes.emplace_back(1.0,
                             TrafoT<double>(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond::Identity(), false));
    store.devicePositions[Device::Device0] =
        TrafoT<double>(Eigen::Vector3d(4, 5, 6), Eigen::Quaterniond::Identity(), false);
    auto const back = readBack(written(store));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->nodes[0].pose.valid());
    EXPECT_EQ(back->nodes[0].pose.translation(), Eigen::Vector3d(1, 2, 3));
    EXPECT_TRUE(back->devicePositions.at(Device::Device0).valid());
}

TEST_F(TrajectoryDataStream, ANodeAtTheFilesDefaultsHasNoneOfThoseFieldsAndReadsBack)
{
    TrajectoryData store;
    store.nodes.emplace_back(0.0,
                             TrafoT<double>::Identity(),
                             TrajectoryNode::Type::Default,
                             Matrix::Constant(1),
                             Matrix::Constant(2),
                             false);
    std::string const frame = written(store);
    // Its vtable ends at matrixB: 14 bytes, a table of 204; time, pose, type, matrixA and matrixB, 0 for
    // absent.
    EXPECT_NE(frame.find(u16(14) + u16(204) + u16(0) + u16(4) + u16(0) + u16(60) + u16(132)),
              std::string::npos);
    EXPECT_LT(frame.size(), frameOfOneNodeAndOneDevice().size() - 8);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    expectSame(*back, store);
    EXPECT_FALSE(back->nodes[0].flag) << "absent means false, although a default node's flag is true";
}

TEST_F(TrajectoryDataStream, AStoreWithNodesAloneOrDevicesAloneReadsBack)
{
    TrajectoryData nodes = randomStore(5, 81);
    nodes.devicePositions.clear();
    TrajectoryData devices = randomStore(0, 82);
    for (TrajectoryData const& store : {nodes, devices}) {
        auto const back = readBack(written(store));
        ASSERT_NE(back, nullptr);
        expectSame(*back, store);
    }
}

TEST_F(TrajectoryDataStream, TwoFramesInOneStreamAreReadByTwoCalls)
{
    TrajectoryData const first = randomStore(3, 83);
    TrajectoryData const second = randomStore(7, 84);
    std::stringstream stream(std::ios::binary | std::ios::in | std::ios::out);
    stream << "before";
    ASSERT_TRUE(first.write(stream));
    std::string const between = "between";
    stream << between;
    ASSERT_TRUE(second.write(stream));
    stream << "x";

    stream.ignore(6);
    TrajectoryData store;
    ASSERT_TRUE(store.readFromStream(stream));
    expectSame(store, first);
    stream.ignore(static_cast<std::streamsize>(between.size()));
    ASSERT_TRUE(store.readFromStream(stream));
    expectSame(store, second);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.get(), 'x');
}

TEST_F(TrajectoryDataStream, AReadReplacesNodesAndDevicesOfBefore)
{
    TrajectoryData store = randomStore(10, 85);
    std::istringstream stream(frameOfOneNodeAndOneDevice());
    ASSERT_TRUE(store.readFromStream(stream));
    expectSame(store, oneNodeAndOneDevice());
}

// Failures: the store stays as it was

struct Refusal
{
    bool good;
    std::streamoff position;
};

Refusal expectRefused(std::string const& frame)
{
    std::istringstream stream(frame, std::ios::binary);
    TrajectoryData const before = randomStore(3, 86);
    TrajectoryData store(before);
    EXPECT_FALSE(store.readFromStream(stream));
    expectSame(store, before);
    EXPECT_EQ(readBack(frame), nullptr);
    bool const good = stream.good();
    stream.clear();
    return {good, stream.tellg()};
}

TEST_F(TrajectoryDataStream, AStreamThatIsNotGoodIsNeitherReadNorTouched)
{
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        std::istringstream stream(frameOfOneNodeAndOneDevice());
        stream.setstate(state);
        TrajectoryData store;
        EXPECT_FALSE(store.readFromStream(stream));
        EXPECT_EQ(stream.rdstate(), state);
        stream.clear();
        EXPECT_EQ(stream.tellg(), 0);
        EXPECT_TRUE(store.nodes.empty());
    }
}

TEST_F(TrajectoryDataStream, AStreamThatEndsAnywhereIsRefused)
{
    std::string const frame = frameOfOneNodeAndOneDevice();
    for (std::size_t length = 0; length < frame.size(); ++length) {
        EXPECT_FALSE(expectRefused(frame.substr(0, length)).good) << length << " bytes";
    }
}

TEST_F(TrajectoryDataStream, ACountBelowFiveIsRefusedWithTheStreamStillGood)
{
    for (std::uint64_t count = 0; count < 5; ++count) {
        auto const refusal = expectRefused(u64(count) + std::string(16, '\0'));
        EXPECT_TRUE(refusal.good);
        EXPECT_EQ(refusal.position, static_cast<std::streamoff>(8 + count));
    }
}

TEST_F(TrajectoryDataStream, ABufferThatIsNotSoundIsRefusedWithTheStreamBehindIt)
{
    std::string const sound = frameOfOneNodeAndOneDevice();
    std::vector<std::string> const damaged{
        withU32(sound, 8, 0x7FFFFFFF),      // root offset
        withU32(sound, 8, 344),             // root just behind the end
        withU16(sound, 8 + 8, 400),         // root's vtable too long
        withU32(sound, 8 + 20, 0x40000000), // nodes outside
        withU32(sound, 8 + 96, 1000),       // more nodes than there is room for
        withU32(sound, 8 + 28, 0xFFFFFFFF), // more devices than there is room for
        withU32(sound, 8 + 100, 21),        // a node off its alignment
        withU16(sound, poseEntry, 225),     // a pose outside its node
    };
    for (std::string const& frame : damaged) {
        auto const refusal = expectRefused(frame + "rest");
        EXPECT_TRUE(refusal.good);
        EXPECT_EQ(refusal.position, 8 + 344);
    }
}

TEST_F(TrajectoryDataStream, EveryDamagedByteIsReadOrRefusedWithoutHarm)
{
    std::string const sound = frameOfOneNodeAndOneDevice();
    for (std::size_t position = 8; position < sound.size(); ++position) {
        for (int const value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            std::string frame = sound;
            frame[position] = static_cast<char>(value);
            (void)readBack(frame);
        }
    }
}

TEST_F(TrajectoryDataStream, ANodeWithoutItsPoseIsRefused)
{
    expectRefused(withU16(frameOfOneNodeAndOneDevice(), poseEntry, 0));
}

TEST_F(TrajectoryDataStream, ANodeWithoutAMatrixIsRefused)
{
    expectRefused(withU16(frameOfOneNodeAndOneDevice(), matrixAEntry, 0));
    expectRefused(withU16(frameOfOneNodeAndOneDevice(), matrixBEntry, 0));
}

TEST_F(TrajectoryDataStream, ACountThatLiesIsRefusedOnceTheStreamEnds)
{
    for (std::uint64_t const count : {std::uint64_t{345}, std::uint64_t{1} << 20, std::uint64_t{1} << 31}) {
        EXPECT_FALSE(expectRefused(frameOfOneNodeAndOneDevice().replace(0, 8, u64(count))).good);
    }
}

TEST_F(TrajectoryDataStream, ACountOf2To40FailsOneWayOrTheOther)
{
    std::istringstream stream(frameOfOneNodeAndOneDevice().replace(0, 8, u64(std::uint64_t{1} << 40)));
    TrajectoryData const before = randomStore(3, 87);
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

TEST_F(TrajectoryDataStream, ACountBeyondAnyBufferPassesTheLengthFailureThroughWithTheStreamBehindTheCount)
{
    for (std::uint64_t const count : {std::uint64_t{1} << 63, std::numeric_limits<std::uint64_t>::max()}) {
        std::istringstream stream(frameOfOneNodeAndOneDevice().replace(0, 8, u64(count)));
        TrajectoryData const before = randomStore(3, 88);
        TrajectoryData store(before);
        EXPECT_THROW((void)store.readFromStream(stream), std::length_error);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(stream.tellg(), 8);
        expectSame(store, before);
    }
}

TEST_F(TrajectoryDataStream, WhatTheStreamThrowsPassesThroughAndTheStoreStays)
{
    std::string const frame = frameOfOneNodeAndOneDevice();
    for (std::size_t const length : {std::size_t{4}, std::size_t{100}}) {
        std::istringstream stream(frame.substr(0, length));
        stream.exceptions(std::ios::failbit);
        TrajectoryData const before = randomStore(3, 89);
        TrajectoryData store(before);
        EXPECT_THROW((void)store.readFromStream(stream), std::ios::failure);
        expectSame(store, before);
    }
}

// Sharing

// A buffer whose nodes are all one and the same table: `count` offsets before the node of the literal frame.
std::string framedSharedNodes(std::uint32_t count)
{
    std::string const single = frameOfOneNodeAndOneDevice();
    std::string const node = single.substr(nodeVtable); // vtable and table, of which the doubles lie on 8 * n
    std::string buffer = u32(12) + u16(6) + u16(8) + u16(4) +
                         u16(0)   // root at 12, its vtable at 4, nodes alone
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
    return framed(buffer + node);
}

TEST_F(TrajectoryDataStream, NodesMayShareATable)
{
    auto const store = readBack(framedSharedNodes(10));
    ASSERT_NE(store, nullptr);
    ASSERT_EQ(store->nodes.size(), 10U);
    for (auto const& node : store->nodes) {
        EXPECT_EQ(node.time, 1.5);
        EXPECT_TRUE(sameBits(node.pose, numberedNode().pose));
    }
}

TEST_F(TrajectoryDataStream, NodesThatWouldUnpackToMoreThanSixteenTimesTheBufferAreRefused)
{
    // n nodes are 256 n bytes; the buffer is 4 n and a little. 16 times that is 64 n and 16 times the little.
    std::string const accepted = framedSharedNodes(20);
    EXPECT_LE(20 * sizeof(TrajectoryNode), 16 * (accepted.size() - 8));
    EXPECT_NE(readBack(accepted), nullptr);
    std::string const refused = framedSharedNodes(30);
    EXPECT_GT(30 * sizeof(TrajectoryNode), 16 * (refused.size() - 8));
    EXPECT_EQ(readBack(refused), nullptr);
}

// The limit of tables

TEST_F(TrajectoryDataStream, AMillionNodesAreWrittenButNotReadBackAndOneFewerAre)
{
    TrajectoryData store;
    store.nodes.resize(1000000);
    std::string frame = written(store);
    EXPECT_EQ(readBack(frame), nullptr);
    store.nodes.pop_back();
    frame = written(store);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->nodes.size(), 999999U);
}

// Devices

TEST_F(TrajectoryDataStream, AnUnknownDeviceIsDroppedWithAMessageAndTheReadGoesOn)
{
    for (std::uint32_t const value : {4U, 1000U, 0xFFFFFFFFU, 0x80000000U}) {
        oV::Models::the().clearLog();
        auto const store = readBack(withU32(frameOfOneNodeAndOneDevice(), deviceValue, value));
        ASSERT_NE(store, nullptr);
        EXPECT_TRUE(store->devicePositions.empty());
        EXPECT_EQ(store->nodes.size(), 1U);

        auto const messages = oV::Models::the().logMessages();
        ASSERT_EQ(messages.size(), 1U);
        EXPECT_EQ(std::string(messages[0].message.stringAnsi()),
                  "Unknown device detected: " + std::to_string(static_cast<std::int32_t>(value)));
        EXPECT_EQ(messages[0].severity, 3);
        EXPECT_EQ(std::string(messages[0].file.stringAnsi()), "TrajectoryData");
        EXPECT_EQ(std::string(messages[0].function.stringAnsi()),
                  "oV::Roamscan::TrajectoryData::readFromStream");
        EXPECT_GT(messages[0].line, 0);
    }
}

TEST_F(TrajectoryDataStream, TheFourKnownDevicesAreTakenOver)
{
    for (std::uint32_t value = 0; value < 4; ++value) {
        auto const store = readBack(withU32(frameOfOneNodeAndOneDevice(), deviceValue, value));
        ASSERT_NE(store, nullptr);
        EXPECT_TRUE(store->devicePositions.contains(static_cast<Device>(value)));
    }
    EXPECT_TRUE(loggedTexts().empty());
}

TEST_F(TrajectoryDataStream, AnUnknownDeviceIsWrittenAsItsNumber)
{
    TrajectoryData store;
    store.devicePositions[Device::DeviceUnknown] = TrafoT<double>::Identity();
    EXPECT_NE(written(store).find(u32(1) + u32(1000) + u32(0)), std::string::npos);
    auto const back = readBack(written(store));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->devicePositions.empty());
    EXPECT_EQ(loggedTexts(), (std::vector<std::string>{"Unknown device detected: 1000"}));
}

// A buffer with device records alone.
std::string framedDevices(std::initializer_list<std::pair<std::int32_t, double>> devices)
{
    std::string buffer = u32(16) + u32(0) + u16(8) + u16(8) + u16(0) + u16(4) // root at 16, its vtable at 8
                         + u32(8) + u32(8) // 16 root, 20 devicePositions at 28
                         + u32(0) + u32(static_cast<std::uint32_t>(devices.size()));
    for (auto const& [device, x] : devices) {
        buffer += u32(static_cast<std::uint32_t>(device)) + u32(0) + f64({x, 0, 0, 1, 0, 0, 0});
    }
    return framed(buffer);
}

TEST_F(TrajectoryDataStream, DeviceRecordsOffTheirAlignmentAreReadAllTheSame)
{
    // The vector's head lies on four bytes, as it must, but its records of doubles do not lie on eight.
    std::string const buffer = u32(20) + u32(0) + u32(0) + u16(8) + u16(8) + u16(0) +
                               u16(4) // root at 20, vtable at 12
                               + u32(8) + u32(8) + u32(0) + u32(1) + u32(2) + u32(0) // records at 36
                               + f64({31, 32, 33, 34, 35, 36, 37});
    auto const store = readBack(framed(buffer));
    ASSERT_NE(store, nullptr);
    EXPECT_TRUE(sameBits(store->devicePositions.at(Device::Device2),
                         oneNodeAndOneDevice().devicePositions.at(Device::Device2)));
}

TEST_F(TrajectoryDataStream, OfTwoRecordsOfADeviceTheLaterWins)
{
    auto const store = readBack(framedDevices({{1, 10}, {3, 30}, {1, 20}}));
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->devicePositions.size(), 2U);
    EXPECT_EQ(store->devicePositions.at(Device::Device1).translation().x(), 20);
    EXPECT_EQ(store->devicePositions.at(Device::Device3).translation().x(), 30);
}

TEST_F(TrajectoryDataStream, AfterAnUnknownDeviceTheNextRecordsAreStillTakenOver)
{
    auto const store = readBack(framedDevices({{7, 10}, {3, 30}, {-1, 20}, {0, 5}}));
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->devicePositions.size(), 2U);
    EXPECT_EQ(loggedTexts(),
              (std::vector<std::string>{"Unknown device detected: 7", "Unknown device detected: -1"}));
}

TEST_F(TrajectoryDataStream, ThePaddingOfADeviceIsIgnored)
{
    auto const store = readBack(withU32(frameOfOneNodeAndOneDevice(), devicePadding, 0xDEADBEEF));
    ASSERT_NE(store, nullptr);
    expectSame(*store, oneNodeAndOneDevice());
}

TEST_F(TrajectoryDataStream, ASinkThatThrowsLeavesTheStoreAsItWas)
{
    oV::Models::the().setLogSink([](oV::LogMessage const&) { throw std::runtime_error("full"); });
    std::istringstream stream(withU32(frameOfOneNodeAndOneDevice(), deviceValue, 9));
    TrajectoryData const before = randomStore(3, 90);
    TrajectoryData store(before);
    EXPECT_THROW((void)store.readFromStream(stream), std::runtime_error);
    oV::Models::the().setLogSink({});
    expectSame(store, before);
}

// Writing

TEST_F(TrajectoryDataStream, NothingIsWrittenToAStreamThatIsNotGood)
{
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        std::ostringstream stream;
        stream.setstate(state);
        EXPECT_FALSE(oneNodeAndOneDevice().write(stream));
        EXPECT_EQ(stream.rdstate(), state);
        EXPECT_EQ(stream.str(), "");
    }
}

TEST_F(TrajectoryDataStream, AStreamThatFailsOnTheWayGivesFalse)
{
    for (std::size_t const room : {0U, 4U, 8U, 100U, 351U}) {
        LimitedBuffer buffer(room);
        std::ostream stream(&buffer);
        EXPECT_FALSE(oneNodeAndOneDevice().write(stream));
        EXPECT_FALSE(stream.good());
    }
}

TEST_F(TrajectoryDataStream, WhatTheStreamThrowsOnWritingPassesThrough)
{
    LimitedBuffer buffer(100);
    std::ostream stream(&buffer);
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW((void)oneNodeAndOneDevice().write(stream), std::ios::failure);
}

TEST_F(TrajectoryDataStream, AWriteFlushesNothing)
{
    LimitedBuffer buffer(352);
    std::ostream stream(&buffer);
    EXPECT_TRUE(oneNodeAndOneDevice().write(stream));
    EXPECT_EQ(buffer.flushes(), 0);
}

TEST_F(TrajectoryDataStream, ReadsAndWritesClearTheGlobalByteOrderFlag)
{
    oV::Endianness::bigEndian = true;
    std::string const frame = written(oneNodeAndOneDevice());
    EXPECT_FALSE(oV::Endianness::bigEndian);
    EXPECT_EQ(frame, frameOfOneNodeAndOneDevice());

    oV::Endianness::bigEndian = true;
    EXPECT_NE(readBack(frame), nullptr);
    EXPECT_FALSE(oV::Endianness::bigEndian);
}

TEST_F(TrajectoryDataStream, DifferentStoresMayBeWrittenAndReadAtOnce)
{
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (std::uint64_t seed = 91; seed < 95; ++seed) {
        threads.emplace_back([store = randomStore(20, seed), &failures] {
            for (int round = 0; round < 20; ++round) {
                auto const back = readBack(written(store));
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

TEST_F(TrajectoryDataStream, AStreamThatIsNotGoodLeavesTheGlobalByteOrderFlag)
{
    oV::Endianness::bigEndian = true;
    std::istringstream input;
    input.setstate(std::ios::failbit);
    EXPECT_EQ(TrajectoryData::read(input), nullptr);
    std::ostringstream output;
    output.setstate(std::ios::failbit);
    EXPECT_FALSE(TrajectoryData().write(output));
    EXPECT_TRUE(oV::Endianness::bigEndian);
    oV::Endianness::bigEndian = false;
}

} // namespace
