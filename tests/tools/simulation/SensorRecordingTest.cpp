#include "tools/simulation/SensorRecording.h"

#include "tools/io/RecordingFile.h"
#include "tools/simulation/Instrument.h"
#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/WalkMotion.h"

#include <roamscan/time/EigenConversion.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

/// A short walk, recorded once for all tests.
struct Recording
{
    Recording()
        : data(recordSensors(WalkMotion(roundWalk(), 0.1, 0.0),
                             roomPlan(),
                             Eigen::Matrix3d::Identity(),
                             1,
                             [this](CloudPoint const& point) { firstHead.push_back(point); }))
    {}

    std::vector<CloudPoint> firstHead;
    SensorData data;
};

Recording const& recording()
{
    static Recording const made;
    return made;
}

} // namespace

TEST(SensorRecording, HasTwoRangefindersTwoInertialUnitsAndTheirPoses)
{
    SensorData const& data = recording().data;
    EXPECT_EQ(data.imuData.size(), 2U);
    EXPECT_EQ(data.rangefinderData.size(), 2U);
    EXPECT_FALSE(data.posesApplied);
    ASSERT_EQ(data.sensorPoses.size(), 4U);
    auto sensors = rangefinders();
    auto const units = inertialUnits();
    sensors.insert(units.begin(), units.end());
    for (auto const& [name, bodyFromSensor] : sensors) {
        auto const& [t, q] = data.sensorPoses.at(name);
        EXPECT_TRUE(bodyFromSensor.translation().isApprox(toEigen(t).cast<double>(), 1e-6)) << name;
        EXPECT_TRUE(bodyFromSensor.linear().isApprox(toEigen(q).toRotationMatrix().cast<double>(), 1e-6))
            << name;
    }
}

TEST(SensorRecording, OnlyTheSecondUnitHasACompass)
{
    for (auto const& [tick, sample] : recording().data.imuData.at("imu1")) {
        EXPECT_FALSE(sample->hasMagneticField());
    }
    for (auto const& [tick, sample] : recording().data.imuData.at("imu2")) {
        EXPECT_TRUE(sample->hasMagneticField());
    }
}

TEST(SensorRecording, BurstsHaveTheTimedPointsOfTheHead)
{
    std::vector<CloudPoint> timed;
    std::ranges::copy_if(recording().firstHead, std::back_inserter(timed), [](CloudPoint const& point) {
        return !std::isnan(point.time);
    });
    EXPECT_LT(timed.size(), recording().firstHead.size()) << "some points lose their times";
    std::size_t i = 0;
    for (auto const& [tick, sample] : recording().data.rangefinderData.at("scanner1")) {
        auto const& points = sample->getRanges().get();
        EXPECT_LE(points.size(), 50U);
        EXPECT_TRUE(points.size() >= 20U || i + points.size() == timed.size())
            << "only the last one is shorter";
        for (auto const& point : points) {
            ASSERT_LT(i, timed.size());
            EXPECT_EQ(toEigen(point.position), toEigen(timed[i].position));
            EXPECT_NEAR(sample->getTimeStamp().get() + static_cast<double>(point.time), timed[i].time, 1e-9);
            ++i;
        }
    }
    EXPECT_EQ(i, timed.size());
}

TEST(SensorRecording, EverySensorHasNoiseOfItsOwn)
{
    // The lost points are lost at random; heads with one noise between them would lose the same ones.
    auto const sizes = [](std::string const& name) {
        std::vector<std::size_t> found;
        for (auto const& [tick, sample] : recording().data.rangefinderData.at(name)) {
            found.push_back(sample->getRanges().get().size());
        }
        return found;
    };
    EXPECT_NE(sizes("scanner1"), sizes("scanner2"));
}

TEST(SensorRecording, AMinuteIsRecordedInFull)
{
    SensorRates const rates = sensorRates(60.0);
    EXPECT_EQ(rates.pointsPerSecond, 20'000.0);
    EXPECT_EQ(rates.burst, 0.002);
    EXPECT_EQ(rates.inertialPerSecond, 200.0);
}

TEST(SensorRecording, EveryDurationFitsAStreamThatCanBeReadBack)
{
    constexpr double largestBuffer = 2147483647.0;
    for (double seconds = 0.01; seconds < 2.0 * longestSimulation; seconds *= 1.3) {
        double const duration = std::min(seconds, longestSimulation);
        SensorRates const rates = sensorRates(duration);
        double const scanned = duration + 0.4;
        double const bursts = std::floor(scanned / rates.burst) + 1.0;
        double const inertial = std::floor(duration * rates.inertialPerSecond) + 1.0;
        EXPECT_LE(1.0 + 4.0 + 4.0 + 2.0 * (bursts + inertial), static_cast<double>(largestTableCount))
            << duration;
        double const points = scanned * rates.pointsPerSecond + 1.0;
        EXPECT_LT(2.0 * (16.0 * points + 64.0 * bursts + 64.0 * inertial), largestBuffer) << duration;
    }
    EXPECT_GT(sensorRates(600.0).burst, sensorRates(60.0).burst);
    EXPECT_EQ(sensorRates(590.0).pointsPerSecond, 20'000.0) << "bursts grow longer before points grow fewer";
}
