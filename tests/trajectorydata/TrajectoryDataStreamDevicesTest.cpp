#include "tests/support/Bits.h"
#include "tests/support/ByteStrings.h"
#include "tests/support/StoreStreams.h"
#include "tests/support/TrajectoryStreams.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/log/LogMessage.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using namespace support;

// A stream with device records only.
std::string streamOfDevices(std::initializer_list<std::pair<std::int32_t, double>> devices)
{
    std::string buffer = u32(16) + u32(0) + u16(8) + u16(8) + u16(0) + u16(4) // root at 16, its vtable at 8
                         + u32(8) + u32(8) // 16 root, 20 devicePositions at 28
                         + u32(0) + u32(static_cast<std::uint32_t>(devices.size()));
    for (auto const& [device, x] : devices) {
        buffer += u32(static_cast<std::uint32_t>(device)) + u32(0) + f64({x, 0, 0, 1, 0, 0, 0});
    }
    return lengthPrefixed(buffer);
}

// Empties the log before each test.
class TrajectoryDataStreamDevices : public testing::Test
{
protected:
    TrajectoryDataStreamDevices() { oV::Models::the().clearLog(); }

    static std::vector<std::string> loggedTexts()
    {
        std::vector<std::string> texts;
        for (auto const& message : oV::Models::the().logMessages()) {
            texts.emplace_back(message.message.stringAnsi());
        }
        return texts;
    }
};

TEST_F(TrajectoryDataStreamDevices, UnknownDeviceIsDroppedAndLoggedAndTheReadContinues)
{
    for (std::uint32_t const value : {4U, 1000U, 0xFFFFFFFFU, 0x80000000U}) {
        oV::Models::the().clearLog();
        auto const store = readBack<TrajectoryData>(withU32(smallTrajectoryStream(), deviceValue, value));
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

TEST_F(TrajectoryDataStreamDevices, TheFourKnownDevicesAreRead)
{
    for (std::uint32_t value = 0; value < 4; ++value) {
        auto const store = readBack<TrajectoryData>(withU32(smallTrajectoryStream(), deviceValue, value));
        ASSERT_NE(store, nullptr);
        EXPECT_TRUE(store->devicePositions.contains(static_cast<Device>(value)));
    }
    EXPECT_TRUE(loggedTexts().empty());
}

TEST_F(TrajectoryDataStreamDevices, UnknownDeviceIsWrittenAsItsNumber)
{
    TrajectoryData store;
    store.devicePositions[Device::DeviceUnknown] = TrafoT<double>::Identity();
    EXPECT_NE(written(store).find(u32(1) + u32(1000) + u32(0)), std::string::npos);
    auto const back = readBack<TrajectoryData>(written(store));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->devicePositions.empty());
    EXPECT_EQ(loggedTexts(), (std::vector<std::string>{"Unknown device detected: 1000"}));
}

TEST_F(TrajectoryDataStreamDevices, MisalignedDeviceRecordsAreRead)
{
    // The vector's head lies on four bytes, as it must, but its records of doubles do not lie on eight.
    std::string const buffer = u32(20) + u32(0) + u32(0) + u16(8) + u16(8) + u16(0) +
                               u16(4) // root at 20, vtable at 12
                               + u32(8) + u32(8) + u32(0) + u32(1) + u32(2) + u32(0) // records at 36
                               + f64({31, 32, 33, 34, 35, 36, 37});
    auto const store = readBack<TrajectoryData>(lengthPrefixed(buffer));
    ASSERT_NE(store, nullptr);
    EXPECT_TRUE(sameBits(store->devicePositions.at(Device::Device2),
                         smallTrajectoryStore().devicePositions.at(Device::Device2)));
}

TEST_F(TrajectoryDataStreamDevices, OfTwoRecordsOfADeviceTheLaterWins)
{
    auto const store = readBack<TrajectoryData>(streamOfDevices({{1, 10}, {3, 30}, {1, 20}}));
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->devicePositions.size(), 2U);
    EXPECT_EQ(store->devicePositions.at(Device::Device1).translation().x(), 20);
    EXPECT_EQ(store->devicePositions.at(Device::Device3).translation().x(), 30);
}

TEST_F(TrajectoryDataStreamDevices, RecordsAfterAnUnknownDeviceAreRead)
{
    auto const store = readBack<TrajectoryData>(streamOfDevices({{7, 10}, {3, 30}, {-1, 20}, {0, 5}}));
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->devicePositions.size(), 2U);
    EXPECT_EQ(loggedTexts(),
              (std::vector<std::string>{"Unknown device detected: 7", "Unknown device detected: -1"}));
}

TEST_F(TrajectoryDataStreamDevices, PaddingOfADeviceRecordIsIgnored)
{
    auto const store = readBack<TrajectoryData>(withU32(smallTrajectoryStream(), devicePadding, 0xDEADBEEF));
    ASSERT_NE(store, nullptr);
    expectSame(*store, smallTrajectoryStore());
}

TEST_F(TrajectoryDataStreamDevices, LogSinkThatThrowsLeavesTheStore)
{
    oV::Models::the().setLogSink([](oV::LogMessage const&) { throw std::runtime_error("full"); });
    std::istringstream stream(withU32(smallTrajectoryStream(), deviceValue, 9));
    TrajectoryData const before = randomTrajectoryStore(3, 90);
    TrajectoryData store(before);
    EXPECT_THROW((void)store.readFromStream(stream), std::runtime_error);
    oV::Models::the().setLogSink({});
    expectSame(store, before);
}

} // namespace
