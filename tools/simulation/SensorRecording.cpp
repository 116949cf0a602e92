#include "tools/simulation/SensorRecording.h"

#include "tools/geometry/Conversions.h"
#include "tools/simulation/BurstCollector.h"
#include "tools/simulation/InertialUnit.h"
#include "tools/simulation/Instrument.h"
#include "tools/simulation/RandomNumbers.h"

#include <algorithm>

namespace oV::Roamscan::tool
{

namespace
{

// Together, the two heads and the two units need fewer than the 1,000,000 tables of a stream.
constexpr double mostPoints = 12'000'000.0; // of a head
constexpr double mostBursts = 150'000.0;    // of a head
constexpr double mostInertial = 340'000.0;  // samples of a unit

/// Records the sensors one after the other.
class Recorder
{
public:
    Recorder(SensorData& data, Motion const& motion, std::uint64_t seed)
        : data_(data),
          motion_(motion),
          seeds_(seed),
          rates_(sensorRates(motion.stopTime() - motion.startTime()))
    {}

    void scanWith(MountedSensor const& head, Building const& building, PointSink const& sink)
    {
        Scanner scanner;
        scanner.bodyFromHead = head.bodyFromSensor;
        scanner.pointsPerSecond = rates_.pointsPerSecond;
        BurstCollector bursts(rates_.burst);
        scan(scanner, motion_, building, nextSeed(), [&](CloudPoint const& point) {
            bursts.add(point);
            sink(point);
        });
        data_.rangefinderData[head.name] = bursts.take();
        data_.sensorPoses[head.name] = toRigid3(head.bodyFromSensor);
    }

    void measureWith(MountedSensor const& sensor, Eigen::Matrix3d const& planFromBuilding, bool hasCompass)
    {
        InertialUnit unit;
        unit.bodyFromUnit = sensor.bodyFromSensor;
        unit.samplesPerSecond = rates_.inertialPerSecond;
        unit.hasCompass = hasCompass;
        data_.imuData[sensor.name] = measure(unit, motion_, planFromBuilding, nextSeed());
        data_.sensorPoses[sensor.name] = toRigid3(sensor.bodyFromSensor);
    }

private:
    /// Every sensor has its own noise.
    [[nodiscard]] std::uint64_t nextSeed() { return seeds_.bits(sensorCount_++, 0); }

    SensorData& data_;
    Motion const& motion_;
    RandomNumbers seeds_;
    SensorRates rates_;
    std::uint64_t sensorCount_ = 0;
};

} // namespace

SensorRates sensorRates(double duration)
{
    double const scanned = duration + 2.0 * Scanner().overhang;
    SensorRates rates;
    rates.pointsPerSecond = std::min(rates.pointsPerSecond, mostPoints / scanned);
    rates.burst = std::max(rates.burst, scanned / mostBursts);
    rates.inertialPerSecond = std::min(rates.inertialPerSecond, mostInertial / duration);
    return rates;
}

SensorData recordSensors(Motion const& motion,
                         Building const& building,
                         Eigen::Matrix3d const& planFromBuilding,
                         std::uint64_t seed,
                         PointSink const& firstHead)
{
    auto const heads = rangefinders();
    auto const units = inertialUnits();
    SensorData data;
    Recorder recorder(data, motion, seed);
    recorder.scanWith(heads[0], building, firstHead);
    recorder.scanWith(heads[1], building, [](CloudPoint const&) {});
    recorder.measureWith(units[0], planFromBuilding, false);
    recorder.measureWith(units[1], planFromBuilding, true);
    return data;
}

} // namespace oV::Roamscan::tool
