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
    SensorRates const rates = sensorRates(motion.stopTime() - motion.startTime());
    SensorData data;
    RandomNumbers const seeds(seed);
    std::uint64_t sensorCount = 0;
    auto const nextSeed = [&] { return seeds.bits(sensorCount++, 0); }; // every sensor has its own noise
    for (auto const& [name, bodyFromHead] : rangefinders()) {
        Scanner scanner;
        scanner.bodyFromHead = bodyFromHead;
        scanner.pointsPerSecond = rates.pointsPerSecond;
        bool const isFirst = data.rangefinderData.empty();
        BurstCollector bursts(rates.burst);
        scan(scanner, motion, building, nextSeed(), [&](CloudPoint const& point) {
            bursts.add(point);
            if (isFirst) {
                firstHead(point);
            }
        });
        data.rangefinderData[name] = bursts.take();
        data.sensorPoses[name] = toRigid3(bodyFromHead);
    }
    for (auto const& [name, bodyFromUnit] : inertialUnits()) {
        InertialUnit unit;
        unit.bodyFromUnit = bodyFromUnit;
        unit.samplesPerSecond = rates.inertialPerSecond;
        unit.hasCompass = !data.imuData.empty(); // all but the first
        data.imuData[name] = measure(unit, motion, planFromBuilding, nextSeed());
        data.sensorPoses[name] = toRigid3(bodyFromUnit);
    }
    return data;
}

} // namespace oV::Roamscan::tool
