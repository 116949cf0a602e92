#include "tools/commands/SensorInfo.h"

#include "tools/commands/PoseInfo.h"
#include "tools/console/Text.h"
#include "tools/geometry/Conversions.h"
#include "tools/io/RecordingFile.h"

#include <roamscan/time/TimeConversion.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

/// Unlike the difference of two times in seconds, exact to the tick for times far from zero.
double secondsBetween(int64 earlier, int64 later)
{
    auto const ticks = static_cast<std::uint64_t>(later) - static_cast<std::uint64_t>(earlier);
    return static_cast<double>(ticks) / TimeConversion::timeResolution;
}

template <typename Sample>
Json describeTimes(SampleMap<Sample> const& samples)
{
    int64 const first = samples.empty() ? 0 : samples.begin()->first;
    int64 const last = samples.empty() ? 0 : samples.rbegin()->first;
    double const duration = secondsBetween(first, last);
    double largestGap = 0.0;
    int64 previous = first;
    for (auto const& [tick, sample] : samples) {
        largestGap = std::max(largestGap, secondsBetween(previous, tick));
        previous = tick;
    }
    return {{"samples", samples.size()},
            {"from", TimeConversion::convertToSeconds(first)},
            {"to", TimeConversion::convertToSeconds(last)},
            {"duration", duration},
            {"rate", samples.size() > 1 ? static_cast<double>(samples.size() - 1) / duration : 0.0},
            {"largestGap", largestGap}};
}

Json describeSensor(SampleMap<mapping::ImuData> const& samples)
{
    Json json = describeTimes(samples);
    json["withMagneticField"] =
        std::ranges::count_if(samples, [](auto const& entry) { return entry.second->hasMagneticField(); });
    return json;
}

Json describeSensor(SampleMap<mapping::RangefinderData> const& samples)
{
    std::uint64_t points = 0;
    for (auto const& [tick, sample] : samples) {
        points += sample->getRanges().get().size();
    }
    Json json = describeTimes(samples);
    json["points"] = points;
    return json;
}

Json describeSensor(mapping::Rigid3<float> const& pose)
{
    return describe(toTrafo(pose));
}

/// An object for each sensor, in order of their names.
template <typename Sensors>
Json describeEach(Sensors const& sensors)
{
    std::map<std::string, Json> ordered;
    for (auto const& [name, sensor] : sensors) {
        ordered[name] = {{"name", name}};
        ordered[name].update(describeSensor(sensor));
    }
    Json list = Json::array();
    for (auto& [name, json] : ordered) {
        list.push_back(std::move(json));
    }
    return list;
}

void printTimes(Json const& sensor, std::ostream& out)
{
    out << "    time: " << number(sensor, "from", 6) << " s to " << number(sensor, "to", 6) << " s, "
        << number(sensor, "duration", 6) << " s long\n"
        << "    " << number(sensor, "rate", 3) << " samples per second, largest gap "
        << number(sensor, "largestGap", 6) << " s\n";
}

} // namespace

Json describe(SensorData const& data)
{
    return {{"inertialUnits", describeEach(data.imuData)},
            {"rangefinders", describeEach(data.rangefinderData)},
            {"poses", describeEach(data.sensorPoses)},
            {"posesApplied", data.posesApplied},
            {"tables", tableCount(data)},
            {"largestTableCount", largestTableCount}};
}

void printSensors(Json const& sensors, std::ostream& out)
{
    auto const name = [](Json const& sensor) { return excerpt(sensor.at("name").get<std::string>()); };
    for (Json const& unit : sensors.at("inertialUnits")) {
        out << "  inertial unit " << name(unit) << ": " << unit.at("samples") << " samples, "
            << unit.at("withMagneticField") << " of them with magnetic field\n";
        printTimes(unit, out);
    }
    for (Json const& rangefinder : sensors.at("rangefinders")) {
        out << "  rangefinder " << name(rangefinder) << ": " << rangefinder.at("samples") << " samples with "
            << rangefinder.at("points") << " points\n";
        printTimes(rangefinder, out);
    }
    for (Json const& pose : sensors.at("poses")) {
        out << "  pose of " << name(pose) << ": " << poseText(pose) << '\n';
    }
    out << (sensors.at("poses").empty() ? "  no sensor poses\n" : "")
        << (sensors.at("posesApplied") ? "  the samples are rotated by the poses\n"
                                       : "  the samples are as recorded, not rotated by the poses\n")
        << "  tables: " << sensors.at("tables") << " of the " << sensors.at("largestTableCount")
        << " that a reader accepts\n";
}

} // namespace oV::Roamscan::tool
