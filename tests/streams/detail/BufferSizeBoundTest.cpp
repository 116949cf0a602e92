/// @file
/// The bound of a buffer's size, with which a store is written, against the size that it really has.

#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/detail/SensorBufferSize.h>
#include <roamscan/streams/detail/FlatBufferSize.h>
#include <roamscan/trajectorydata/detail/TrajectoryBufferSize.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using oV::Roamscan::Device;
using oV::Roamscan::SensorData;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using oV::Roamscan::TrajectoryNode;
using oV::Roamscan::detail::bufferSizeBound;
using oV::Roamscan::detail::FlatBufferSize;

constexpr unsigned seed = 20260;
constexpr int rounds = 300;

template <typename Store>
void expectTightBound(Store const& store)
{
    std::ostringstream stream(std::ios::binary);
    ASSERT_TRUE(store.write(stream));
    std::uint64_t const size = stream.str().size() - sizeof(std::uint64_t);
    EXPECT_GE(bufferSizeBound(store), size);
    EXPECT_LE(bufferSizeBound(store), size + FlatBufferSize::allowance) << size << " bytes";
}

class RandomStores
{
public:
    SensorData sensorData()
    {
        SensorData data;
        for (int i = number(4); i > 0; --i) {
            auto& samples = data.imuData[name()];
            for (int key = number(40); key > 0; --key) {
                samples[key] = number(2) == 0 ? support::imuSample(time(), {})
                                              : support::imuSampleWithField(time(), {}, {}, {});
            }
        }
        for (int i = number(4); i > 0; --i) {
            auto& samples = data.rangefinderData[name()];
            for (int key = number(40); key > 0; --key) {
                std::vector<mapping::TimedRangefinderPoint> points(static_cast<std::size_t>(number(5)));
                samples[key] = support::rangeSample(time(), {}, points);
            }
        }
        for (int i = number(4); i > 0; --i) {
            data.sensorPoses[name()] = {};
        }
        data.posesApplied = number(2) == 0;
        return data;
    }

    TrajectoryData trajectoryData()
    {
        TrajectoryData data;
        for (int i = number(100); i > 0; --i) {
            data.nodes.emplace_back(time());
            data.nodes.back().type = static_cast<TrajectoryNode::Type>(number(2));
            data.nodes.back().flag = number(2) == 0;
        }
        for (int device = number(5); device > 0; --device) {
            data.devicePositions[static_cast<Device>(device - 1)] = TrafoT<double>::Identity();
        }
        return data;
    }

private:
    /// From 0 to `limit` - 1.
    int number(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(generator_); }
    /// Often zero, which is not stored.
    double time() { return number(3); }
    std::string name() { return std::string(static_cast<std::size_t>(number(6)), 'x'); }

    std::mt19937 generator_{seed};
};

TEST(BufferSizeBound, IsTightForRandomSensorData)
{
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    RandomStores random;
    for (int i = 0; i < rounds; ++i) {
        expectTightBound(random.sensorData());
    }
}

TEST(BufferSizeBound, IsTightForRandomTrajectoryData)
{
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    RandomStores random;
    for (int i = 0; i < rounds; ++i) {
        expectTightBound(random.trajectoryData());
    }
}

TEST(BufferSizeBound, CountsAMagneticFieldOnlyWhereThereIsOne)
{
    // An offset of 4 bytes and a table of 40 without the field, of 48 with it.
    constexpr int count = 10000;
    SensorData without;
    SensorData with;
    for (int key = 0; key < count; ++key) {
        without.imuData["imu"][key] = support::imuSample(1.0, {});
        with.imuData["imu"][key] = support::imuSampleWithField(1.0, {}, {}, {});
    }
    expectTightBound(without);
    expectTightBound(with);
    EXPECT_NEAR(static_cast<double>(bufferSizeBound(without)), 44.0 * count, 1200.0);
    EXPECT_NEAR(static_cast<double>(bufferSizeBound(with)), 52.0 * count, 1200.0);
}

} // namespace
