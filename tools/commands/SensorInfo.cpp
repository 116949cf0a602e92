#include "tools/commands/SensorInfo.h"

#include "tools/commands/PoseInfo.h"
#include "tools/commands/SensorSummary.h"
#include "tools/console/Text.h"
#include "tools/io/SensorFile.h"

#include <ostream>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

using Json = nlohmann::ordered_json;

Json sensorJson(std::string const& name, SampleTimes const& times)
{
    return {{"name", name},
            {"samples", times.samples},
            {"from", times.from},
            {"to", times.to},
            {"duration", times.duration},
            {"rate", times.rate},
            {"largestGap", times.largestGap}};
}

void printTimes(SampleTimes const& times, std::ostream& out)
{
    out << "    time: " << fixed(times.from, 6) << " s to " << fixed(times.to, 6) << " s, "
        << fixed(times.duration, 6) << " s long\n"
        << "    " << fixed(times.rate, 3) << " samples a second, largest gap " << fixed(times.largestGap, 6)
        << " s\n";
}

} // namespace

Json toJson(SensorData const& data)
{
    SensorSummary const summary = summarise(data);
    Json json;
    json["inertialUnits"] = Json::array();
    for (auto const& unit : summary.inertialUnits) {
        Json entry = sensorJson(unit.name, unit.times);
        entry["withMagneticField"] = unit.withMagneticField;
        json["inertialUnits"].push_back(std::move(entry));
    }
    json["rangefinders"] = Json::array();
    for (auto const& rangefinder : summary.rangefinders) {
        Json entry = sensorJson(rangefinder.name, rangefinder.times);
        entry["points"] = rangefinder.points;
        json["rangefinders"].push_back(std::move(entry));
    }
    json["poses"] = Json::array();
    for (auto const& [name, pose] : summary.poses) {
        Json entry{{"name", name}};
        addPose(entry, pose);
        json["poses"].push_back(std::move(entry));
    }
    json["posesApplied"] = summary.posesApplied;
    json["tables"] = summary.tables;
    json["largestTableCount"] = largestTableCount;
    return json;
}

void printText(SensorData const& data, std::ostream& out)
{
    SensorSummary const summary = summarise(data);
    for (auto const& unit : summary.inertialUnits) {
        out << "  inertial unit " << excerpt(unit.name) << ": " << unit.times.samples << " samples, "
            << unit.withMagneticField << " of them with magnetic field\n";
        printTimes(unit.times, out);
    }
    for (auto const& rangefinder : summary.rangefinders) {
        out << "  rangefinder " << excerpt(rangefinder.name) << ": " << rangefinder.times.samples
            << " samples with " << rangefinder.points << " points\n";
        printTimes(rangefinder.times, out);
    }
    for (auto const& [name, pose] : summary.poses) {
        out << "  pose of " << excerpt(name) << ": " << poseInWords(pose) << '\n';
    }
    out << (summary.poses.empty() ? "  no sensor poses\n" : "")
        << (summary.posesApplied ? "  the samples are rotated by the poses\n"
                                 : "  the samples are as recorded, not rotated by the poses\n")
        << "  tables: " << summary.tables << " of the " << largestTableCount << " that a reader accepts\n";
}

} // namespace oV::Roamscan::tool
