#include "tools/commands/FileReport.h"
#include "tools/commands/SensorInfo.h"
#include "tools/commands/TrajectoryInfo.h"
#include "tools/console/Text.h"
#include "tools/io/RecordingFile.h"

#include <CLI/CLI.hpp>

#include <ostream>
#include <string>
#include <type_traits>

namespace oV::Roamscan::tool
{

namespace
{

constexpr char const* kindOf(TrajectoryData const& /*data*/)
{
    return "trajectory";
}

constexpr char const* kindOf(SensorData const& /*data*/)
{
    return "sensor";
}

Json describeRecording(std::filesystem::path const& path)
{
    return std::visit(
        [&](auto const& file) {
            Json json{{"file", path.string()}, {"kind", kindOf(*file.data)}};
            json.update(describe(*file.data));
            json["bytesBehind"] = file.bytesAfter;
            return json;
        },
        readRecordingFile(path));
}

void printText(std::vector<Json> const& descriptions, std::ostream& out)
{
    for (Json const& json : descriptions) {
        out << oneLine(json.at("file").get<std::string>()) << ": " << json.at("kind").get<std::string>()
            << " stream\n";
        (json.at("kind") == "trajectory" ? printTrajectory : printSensors)(json, out);
        if (json.at("bytesBehind") > 0) {
            out << "  " << json.at("bytesBehind") << " bytes follow the stream\n";
        }
    }
}

} // namespace

void addInfo(CLI::App& app, Console& console)
{
    CLI::App* const command = app.add_subcommand("info", "Show what trajectory and sensor streams contain");
    command->footer("Example:\n  roamscan info walk/walk.trajectory walk/walk.sensors --json\n");
    addFileReport(*command, "Trajectory or sensor streams", describeRecording, printText, console);
}

} // namespace oV::Roamscan::tool
