#pragma once

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TrafoT.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// When a sensor recorded; all zero without a sample.
struct SampleTimes
{
    std::size_t samples = 0;
    double from = 0.0; ///< Seconds, as all times here.
    double to = 0.0;
    double duration = 0.0;
    double rate = 0.0;       ///< Samples per second between the first and the last; 0 with one sample only.
    double largestGap = 0.0; ///< Between samples that follow each other.
};

/// What is in a sensor stream, in numbers.
struct SensorSummary
{
    struct InertialUnit
    {
        std::string name;
        SampleTimes times;
        std::size_t withMagneticField = 0; ///< Samples.
    };
    struct Rangefinder
    {
        std::string name;
        SampleTimes times;
        std::uint64_t points = 0;
    };

    std::vector<InertialUnit> inertialUnits; ///< In order of their names, as the rangefinders.
    std::vector<Rangefinder> rangefinders;
    std::map<std::string, TrafoT<double>> poses; ///< Of the sensors.
    bool posesApplied = false;
    std::size_t tables = 0; ///< That the store takes in a stream.
};

[[nodiscard]] SensorSummary summarise(SensorData const& data);

} // namespace oV::Roamscan::tool
