#pragma once

#include "tests/support/Bits.h"
#include "tests/support/ByteStrings.h"
#include "tests/support/RandomPoses.h"
#include "tests/support/StoreStreams.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// Stores of trajectory data and the bytes of their streams.
namespace support
{

inline oV::Roamscan::TrajectoryNode numberedNode()
{
    oV::Roamscan::TrajectoryNode node(
        1.5,
        oV::Roamscan::TrafoT<double>(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond(4, 5, 6, 7), true),
        static_cast<oV::Roamscan::TrajectoryNode::Type>(0xA0B0C0D0U),
        Eigen::Matrix3d::Zero(),
        Eigen::Matrix3d::Zero(),
        true);
    for (int i = 0; i < 9; ++i) {
        node.matrixA.data()[i] = 11 + i;
        node.matrixB.data()[i] = 21 + i;
    }
    return node;
}

/// One node of distinct numbers and one device.
inline oV::Roamscan::TrajectoryData smallTrajectoryStore()
{
    oV::Roamscan::TrajectoryData store;
    store.nodes.push_back(numberedNode());
    store.devicePositions[oV::Roamscan::Device::Device2] =
        oV::Roamscan::TrafoT<double>(Eigen::Vector3d(31, 32, 33), Eigen::Quaterniond(34, 35, 36, 37), true);
    return store;
}

inline oV::Roamscan::TrajectoryData randomTrajectoryStore(int nodes, std::uint64_t seed)
{
    RandomPoses random(seed);
    oV::Roamscan::TrajectoryData store;
    for (int i = 0; i < nodes; ++i) {
        store.nodes.emplace_back(random.number(-1e9, 1e9),
                                 random.pose(),
                                 static_cast<oV::Roamscan::TrajectoryNode::Type>(i * 77777),
                                 Eigen::Matrix3d::Random(),
                                 Eigen::Matrix3d::Random(),
                                 i % 3 == 0);
    }
    for (oV::Roamscan::Device const device : {oV::Roamscan::Device::Device0,
                                              oV::Roamscan::Device::Device1,
                                              oV::Roamscan::Device::Device2,
                                              oV::Roamscan::Device::Device3})
    {
        store.devicePositions[device] = random.pose();
    }
    return store;
}

inline void expectSame(oV::Roamscan::TrajectoryData const& actual,
                       oV::Roamscan::TrajectoryData const& expected)
{
    ASSERT_EQ(actual.nodes.size(), expected.nodes.size());
    for (std::size_t i = 0; i < actual.nodes.size(); ++i) {
        auto const& a = actual.nodes[i];
        auto const& b = expected.nodes[i];
        ASSERT_TRUE(sameBits(a.pose, b.pose)) << "node " << i;
        ASSERT_EQ(bits(a.time), bits(b.time)) << "node " << i;
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

/// The stream of smallTrajectoryStore(). Offsets count from the beginning of the buffer, after the length
/// prefix.
inline std::string smallTrajectoryStream()
{
    return u64(344)                             // 344 bytes follow
           + u32(16)                            //   0 the root table lies at 16
           + u32(0)                             //   4 padding, so that doubles lie on multiples of 8
           + u16(8) + u16(12) + u16(4) + u16(8) //   8 root's vtable: 8 bytes, table of 12, fields at 4 and 8
           + u32(8)                             //  16 the root table: its vtable lies 8 before it
           + u32(76)                            //  20 nodes at 20 + 76
           + u32(4)                             //  24 devicePositions at 24 + 4
           + u32(1)                             //  28 one device
           + u32(2) + u32(0)                    //  32 Device2, padding
           + f64({31, 32, 33})                  //  40 translation x, y, z
           + f64({34, 35, 36, 37})              //  64 rotation w, x, y, z
           + u32(1)                             //  96 one node
           + u32(20)                            // 100 at 100 + 20
           + u16(16) + u16(224)                 // 104 its vtable: 16 bytes, table of 224, then the offsets of
           + u16(216) + u16(8) + u16(68)        // 108 time, pose, type,
           + u16(72) + u16(144) + u16(7)        // 114 matrixA, matrixB, flag
           + u32(16)                            // 120 the node: its vtable lies 16 before it
           + bytes({0, 0, 0, 1})                // 124 padding, flag
           + f64({1, 2, 3})                     // 128 translation x, y, z
           + f64({4, 5, 6, 7})                  // 152 rotation w, x, y, z
           + u32(0)                             // 184 padding
           + u32(0xA0B0C0D0U)                   // 188 type
           + f64({11, 12, 13, 14, 15, 16, 17, 18, 19}) // 192 matrixA by columns
           + f64({21, 22, 23, 24, 25, 26, 27, 28, 29}) // 264 matrixB by columns
           + f64({1.5});                               // 336 time
}

/// Positions in smallTrajectoryStream(), the length prefix included.
inline constexpr std::size_t nodeVtable = 8 + 104;
inline constexpr std::size_t nodePoseEntry = nodeVtable + 6;
inline constexpr std::size_t matrixAEntry = nodeVtable + 10;
inline constexpr std::size_t matrixBEntry = nodeVtable + 12;
inline constexpr std::size_t deviceValue = 8 + 32;
inline constexpr std::size_t devicePadding = deviceValue + 4;

struct TrajectoryFormat
{
    using Store = oV::Roamscan::TrajectoryData;

    static Store smallStore() { return smallTrajectoryStore(); }
    static std::string smallStream() { return smallTrajectoryStream(); }

    /// smallStream() with one number damaged in each.
    static std::vector<std::string> invalidStreams()
    {
        std::string const valid = smallStream();
        return {
            withU32(valid, 8, 0x7FFFFFFF),      // root's offset
            withU32(valid, 8, 344),             // root directly after the end
            withU16(valid, 8 + 8, 400),         // root's vtable too long
            withU32(valid, 8 + 20, 0x40000000), // nodes outside
            withU32(valid, 8 + 96, 1000),       // more nodes than the buffer holds
            withU32(valid, 8 + 28, 0xFFFFFFFF), // more devices than the buffer holds
            withU32(valid, 8 + 100, 21),        // a misaligned node
            withU16(valid, nodePoseEntry, 225), // a pose outside its node
        };
    }
};

} // namespace support
