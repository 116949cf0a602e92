#include "tools/CommandLine.h"

#include "tools/commands/ExifCommand.h"
#include "tools/commands/ImportCommand.h"
#include "tools/commands/InfoCommand.h"
#include "tools/commands/PanoramaCommand.h"
#include "tools/commands/PlaceCommand.h"
#include "tools/commands/SimulateCommand.h"
#include "tools/commands/StillCommand.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <functional>
#include <map>
#include <new>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

constexpr char const* examples = R"(Examples:
  roamscan import --format tum groundtruth.txt walk.trajectory   poses as text to a trajectory
  roamscan simulate walk --seconds 60                            make up a walk with a scanner
  roamscan place --trajectory walk/walk.trajectory --from 1 --to 0 --sensors walk/walk.sensors --picture plan.png
                                                                 put the scan points where they belong
  roamscan still --trajectory walk/walk.trajectory --speed 0.02  when the device stood still
  roamscan info walk/walk.sensors --json                         what is in a trajectory or sensor stream
  roamscan exif panorama.jpg                                     when a picture was taken, and with which camera
)";

/// The command line, and what was found on it.
class CommandLine
{
public:
    CommandLine()
    {
        app_.name("roamscan");
        app_.footer(examples);
        app_.require_subcommand(1);
        app_.set_version_flag("--version", "roamscan " ROAMSCAN_TOOL_VERSION);
        app_.failure_message([](CLI::App const* /*app*/, CLI::Error const& error) {
            return "roamscan: " + oneLine(error.what()) + " (see roamscan --help)\n";
        });
        addImport();
        addSimulate();
        addPlace();
        addStill();
        addInfo();
        addPanorama();
        addExif();
    }

    int run(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err)
    {
        try {
            app_.parse(argumentCount, arguments);
        } catch (CLI::ParseError const& stopped) { // also for --help and --version, which are no failures
            return app_.exit(stopped, out, err) == 0 ? 0 : 1;
        }
        return actions_.at(app_.get_subcommands().front())(out, err) ? 0 : 1;
    }

private:
    /// Runs a command, and tells whether all of it went well; failures that end it are thrown.
    using Action = std::function<bool(std::ostream& out, std::ostream& err)>;

    static inline std::map<std::string, PoseFormat> const formats{
        {"tum", PoseFormat::Tum}, {"euroc", PoseFormat::Euroc}, {"kitti", PoseFormat::Kitti}};

    void addImport()
    {
        CLI::App* const command = app_.add_subcommand("import", "Make a trajectory of a text of poses");
        command->add_option("--format", formatName_, "tum, euroc or kitti")
            ->required()
            ->check(CLI::IsMember(&formats));
        command->add_option("--times", import_.times, "KITTI: a file with the time of each pose in seconds");
        command->add_option("IN", import_.input, "The text")->required();
        command->add_option("OUT", import_.output, "The trajectory to write")->required();
        command->footer("Example:\n  roamscan import --format euroc data.csv flight.trajectory\n");
        actions_[command] = [this](std::ostream& out, std::ostream& /*err*/) {
            import_.format = formats.at(formatName_);
            runImport(import_, out);
            return true;
        };
    }

    void addSimulate()
    {
        CLI::App* const command = app_.add_subcommand(
            "simulate", "Make up a walk with a scanner, what it records, the true surfaces, and a panorama");
        command->add_option("OUT_DIR", simulate_.folder, "The folder to write to")->required();
        CLI::Option* const seconds = command->add_option(
            "--seconds",
            simulate_.seconds,
            "How long the walk takes, up to a day (60); the sensors measure less often in long ones");
        command->add_option("--seed", simulate_.seed, "Same seed, same walk and noise (1)")
            ->check(CLI::NonNegativeNumber);
        command->add_option("--along", simulate_.along, "Follow the poses of this trajectory instead")
            ->excludes(seconds);
        command->add_option("--panorama",
                            simulate_.panoramaColumns,
                            "Columns of the panorama, up to 8000 (2400); 0 makes none");
        command->footer("Example:\n  roamscan simulate walk --along flight.trajectory\n");
        actions_[command] = [this](std::ostream& out, std::ostream& /*err*/) {
            runSimulate(simulate_, out);
            return true;
        };
    }

    void addPlace()
    {
        CLI::App* const command = app_.add_subcommand("place", "Put scan points where they belong");
        command->add_option("--trajectory", place_.trajectory, "The trajectory of the walk")->required();
        command->add_option("--from", fromDevice_, "The device whose scan it is, 0 to 3")
            ->required()
            ->check(CLI::Range(0, 3));
        command->add_option("--to", toDevice_, "The device in whose frame the points are placed, 0 to 3")
            ->required()
            ->check(CLI::Range(0, 3));
        CLI::Option_group* const scan = command->add_option_group("scan", "Where the scan points are");
        scan->require_option(1);
        scan->add_option("--points", place_.points, "The scan, a binary little-endian PLY file");
        CLI::Option* const sensors =
            scan->add_option("--sensors", place_.sensors, "The scan of a rangefinder in this sensor stream");
        command->add_option("--rangefinder", place_.rangefinder, "Which rangefinder (the first by name)")
            ->needs(sensors);
        command->add_option("--cloud", place_.cloud, "Write the placed points to this PLY file");
        command->add_option("--picture", place_.picture, "Draw a plan to this PNG file");
        command->add_option(
            "--building", place_.building, "Measure the points against these true surfaces (JSON)");
        command->footer("Example:\n  roamscan place --trajectory walk/walk.trajectory --from 1 --to 0 "
                        "--sensors walk/walk.sensors --cloud cloud.ply --picture plan.png\n");
        actions_[command] = [this](std::ostream& out, std::ostream& /*err*/) {
            place_.from = static_cast<Device>(fromDevice_);
            place_.to = static_cast<Device>(toDevice_);
            runPlace(place_, out);
            return true;
        };
    }

    void addStill()
    {
        CLI::App* const command = app_.add_subcommand("still", "Find when the device stood still");
        command->add_option("--trajectory", still_.trajectory, "The trajectory of the recording")->required();
        command->add_option(
            "--speed", still_.settings.speed, "Slower than this is still, in metres a second (0.05)");
        command->add_option(
            "--rate", still_.settings.rate, "Turning slower than this is still, in degrees a second (3)");
        command->add_option(
            "--min-seconds", still_.settings.minSeconds, "Leave out what is shorter than this (1)");
        command->add_flag("--json", still_.json, "One JSON object instead of a table");
        command->footer(
            "Example:\n  roamscan still --trajectory walk/walk.trajectory --min-seconds 5 --json\n");
        actions_[command] = [this](std::ostream& out, std::ostream& /*err*/) {
            runStill(still_, out);
            return true;
        };
    }

    void addInfo()
    {
        CLI::App* const command =
            app_.add_subcommand("info", "Tell what is in trajectories and sensor streams");
        command->add_option("FILE", info_.files, "Trajectory or sensor streams")->required();
        command->add_flag("--json", info_.json, "One JSON array with an object for each file");
        command->footer("Example:\n  roamscan info walk/walk.trajectory walk/walk.sensors --json\n");
        actions_[command] = [this](std::ostream& out, std::ostream& err) { return runInfo(info_, out, err); };
    }

    void addPanorama()
    {
        CLI::App* const command =
            app_.add_subcommand("panorama", "Split a wide picture into tiles, or join them");
        command->require_subcommand(1);
        CLI::App* const split = command->add_subcommand("split", "Make tiles of a picture");
        split->add_option("IN", panorama_.input, "The picture in one file")->required();
        split
            ->add_option(
                "OUT", panorama_.output, "The place of the tiles: pano.png for PNG tiles in the folder pano")
            ->required();
        CLI::App* const join = command->add_subcommand("join", "Make one picture of tiles");
        join->add_option(
                "IN", panorama_.input, "The place of the tiles: pano.png for PNG tiles in the folder pano")
            ->required();
        join->add_option("OUT", panorama_.output, "The picture to write")->required();
        command->footer("Example:\n  roamscan panorama join walk/panorama.png panorama.jpg\n");
        actions_[command] = [this, split](std::ostream& out, std::ostream& /*err*/) {
            (split->parsed() ? runPanoramaSplit : runPanoramaJoin)(panorama_, out);
            return true;
        };
    }

    void addExif()
    {
        CLI::App* const command =
            app_.add_subcommand("exif", "Tell when pictures were taken, and with which camera");
        command->add_option("FILE", exif_.files, "Pictures in JPEG files")->required();
        command->add_flag("--json", exif_.json, "One JSON array with an object for each file");
        command->footer("Example:\n  roamscan exif panorama.jpg detail.jpg --json\n");
        actions_[command] = [this](std::ostream& out, std::ostream& err) { return runExif(exif_, out, err); };
    }

    std::map<CLI::App const*, Action> actions_;
    CLI::App app_{"Carries scan points along a trajectory into the world."};
    std::string formatName_;
    int fromDevice_ = 0;
    int toDevice_ = 0;
    ImportOptions import_;
    SimulateOptions simulate_;
    PlaceOptions place_;
    StillOptions still_;
    InfoOptions info_;
    PanoramaOptions panorama_;
    ExifOptions exif_;
};

void printFailure(std::ostream& err, std::string const& why)
{
    err << "roamscan: " << oneLine(why) << '\n';
}

} // namespace

int runTool(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err) noexcept
{
    try {
        int const status = CommandLine().run(argumentCount, arguments, out, err);
        out.flush();
        if (!out) {
            throw ToolError("the results could not be printed to standard output");
        }
        return status;
    } catch (std::bad_alloc const&) {
        printFailure(err, "not enough memory for this input");
    } catch (std::exception const& failure) {
        printFailure(err, failure.what());
    } catch (...) {
        printFailure(err, "failed for a reason that it cannot name");
    }
    return 1;
}

} // namespace oV::Roamscan::tool
