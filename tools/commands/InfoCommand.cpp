#include "tools/commands/FileReport.h"
#include "tools/commands/SensorInfo.h"
#include "tools/commands/TrajectoryInfo.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/io/RecordingFile.h"

#include <CLI/CLI.hpp>

#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

Json describeRecording(std::filesystem::path const& path)
{
    auto const recording = readRecordingFile(path);
    bool const isTrajectory = std::holds_alternative<TrajectoryFile>(recording);
    Json json{{"file", utf8(path)}, {"kind", isTrajectory ? "trajectory" : "sensor"}};
    std::visit(
        [&](auto const& file) {
            json.update(describe(*file.data));
            json["bytesBehind"] = file.bytesAfter;
        },
        recording);
    return json;
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
