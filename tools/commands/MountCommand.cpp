#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/commands/PoseInfo.h"
#include "tools/console/JsonText.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/RecordingFile.h"
#include "tools/mounts/MountText.h"
#include "tools/mounts/RangefinderMount.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

struct MountArguments
{
    std::filesystem::path file;
    std::filesystem::path sensors; ///< May be empty.
    std::vector<std::string> set;  ///< "1=x,y,z,qw,qx,qy,qz"
    std::vector<int> remove;       ///< Devices.
    bool json = false;
};

void change(TrajectoryData& data, MountArguments const& options)
{
    for (int const device : options.remove) {
        requirePosition(data, static_cast<Device>(device), options.file);
    }
    for (int const device : options.remove) {
        data.devicePositions.erase(static_cast<Device>(device));
    }
    setMounts(data, options.set, "--set");
}

/// Replaces the stream in the file; what follows it stays.
void rewrite(TrajectoryFile const& file, std::filesystem::path const& path)
{
    OutputFile output(path);
    writeTrajectory(*file.data, output.stream(), path);
    if (file.bytesAfter > 0) {
        InputFile old = openInput(path);
        old.stream.seekg(static_cast<std::streamoff>(old.size - file.bytesAfter));
        output.stream() << old.stream.rdbuf();
        if (!old.stream) {
            throw fileError(path, "what follows the trajectory cannot be read; check the medium");
        }
    }
    output.commit();
}

/// The names of the rangefinders in order.
std::vector<std::string> rangefindersOf(SensorData const& sensors)
{
    std::vector<std::string> names;
    for (auto const& [name, samples] : sensors.rangefinderData) {
        names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

Json describeMounts(TrajectoryData const& data, MountArguments const& options)
{
    std::shared_ptr<SensorData> const sensors =
        options.sensors.empty() ? nullptr : readSensorFile(options.sensors).data;
    Json json{{"file", utf8(options.file)}, {"devices", Json::array()}};
    for (Mount const& mount : mountsOf(data)) {
        Json entry{{"device", static_cast<int>(mount.device)}};
        entry.update(describe(mount.position));
        entry["text"] = mountText(mount);
        json["devices"].push_back(entry);
    }
    if (sensors) {
        json["rangefinders"] = Json::array();
        for (std::string const& name : rangefindersOf(*sensors)) {
            auto const devices = devicesOfRangefinder(data, *sensors, name);
            json["rangefinders"].push_back(
                {{"name", name}, {"hasPose", sensors->sensorPoses.contains(name)}, {"devices", devices}});
        }
    }
    return json;
}

void printMounts(Json const& json, std::ostream& out)
{
    Json const& devices = json.at("devices");
    out << oneLine(json.at("file").get<std::string>()) << ": "
        << counted(devices.size(), "device position", "device positions")
        << (devices.empty() ? "\n" : " (device=x,y,z,qw,qx,qy,qz in metres)\n");
    for (Json const& device : devices) {
        out << "  " << device.at("text").get<std::string>() << '\n';
    }
    for (Json const& rangefinder : json.value("rangefinders", Json::array())) {
        out << "  " << excerpt(rangefinder.at("name").get<std::string>());
        if (auto const fitting = rangefinder.at("devices").get<std::vector<Device>>(); !fitting.empty()) {
            out << " is " << namesOf(fitting) << '\n';
        } else if (rangefinder.at("hasPose")) {
            out << " is at the position of no device\n";
        } else {
            out << " has no pose in the sensor stream\n";
        }
    }
}

void run(MountArguments const& options, std::ostream& out)
{
    bool const changes = !options.set.empty() || !options.remove.empty();
    if (changes && isStandardStream(options.file)) {
        throw ToolError("--set and --remove change a file and not a pipe; name a file");
    }
    TrajectoryFile file = readTrajectoryFile(options.file);
    change(*file.data, options);
    Json const description = describeMounts(*file.data, options);
    if (changes) {
        rewrite(file, options.file);
    }
    (options.json ? printJson : printMounts)(description, out);
}

} // namespace

void addMount(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<MountArguments>();
    CLI::App* const command =
        app.add_subcommand("mount", "Show, set and remove the positions of the devices on the instrument");
    addPath(*command, "FILE", options->file, "The trajectory")->required();
    command
        ->add_option("--set",
                     options->set,
                     "Set the position of a device relative to the tracked body; may be given several times")
        ->allow_extra_args(false)
        ->type_name("DEVICE=x,y,z,qw,qx,qy,qz");
    command
        ->add_option(
            "--remove", options->remove, "Remove the position of a device; may be given several times")
        ->allow_extra_args(false)
        ->check(CLI::Range(0, 3))
        ->type_name("DEVICE");
    addPath(*command,
            "--sensors",
            options->sensors,
            "Show which devices the rangefinders of this sensor stream are");
    command->add_flag("--json", options->json, "Print JSON instead of text");
    command->footer(
        "A position maps points of the device to the tracked body: translation in metres, then the\n"
        "quaternion with its real part first.\n\n"
        "Example:\n  roamscan mount walk.trajectory --set 1=0.1,0,0.25,1,0,0,0 --remove 3\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool
