#include "tools/CommandLine.h"

#include "tools/commands/Commands.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <new>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

constexpr char const* examples = R"(Examples:
  roamscan import --format tum groundtruth.txt walk.trajectory   convert poses in a text file to a trajectory
  roamscan simulate walk --seconds 60                            simulate a walk with a scanner
  roamscan place --trajectory walk/walk.trajectory --from 1 --to 0 --sensors walk/walk.sensors --picture plan.png
                                                                 transform scan points along a trajectory
  roamscan still --trajectory walk/walk.trajectory --speed 0.02  find when the device stood still
  roamscan line --trajectory walk/walk.trajectory --from 1 --to 0 --nodes walk.glb
                                                                 draw the path for a viewer (glTF or OBJ)
  roamscan info walk/walk.sensors --json                         show what a trajectory or sensor stream contains
  roamscan panorama split panorama.jpg tiles/panorama.png        split a wide picture into tiles
  roamscan exif panorama.jpg                                     show when and with which camera it was taken
  roamscan options options.txt --set Denoise.radius=0.2          show and edit the saved options of plug-ins
)";

int runCommand(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err)
{
    Console console{out, err};
    CLI::App app("Transforms scan points along a trajectory into world coordinates.", "roamscan");
    app.footer(examples);
    app.require_subcommand(1);
    app.set_version_flag("--version", "roamscan " ROAMSCAN_TOOL_VERSION);
    app.failure_message([](CLI::App const* /*app*/, CLI::Error const& error) {
        return "roamscan: " + oneLine(error.what()) + " (see roamscan --help)\n";
    });
    addImport(app, console);
    addSimulate(app, console);
    addPlace(app, console);
    addStill(app, console);
    addLine(app, console);
    addInfo(app, console);
    addPanorama(app, console);
    addExif(app, console);
    addOptions(app, console);
    try {
        app.parse(argumentCount, arguments);   // runs the command
    } catch (CLI::ParseError const& stopped) { // also thrown for --help and --version, which are no failures
        return app.exit(stopped, out, err) == 0 ? 0 : 1;
    }
    return console.failed ? 1 : 0;
}

void printFailure(std::ostream& err, std::string const& why)
{
    err << "roamscan: " << oneLine(why) << '\n';
}

} // namespace

int runTool(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err) noexcept
{
    try {
        int const status = runCommand(argumentCount, arguments, out, err);
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
        printFailure(err, "failed for an unknown reason");
    }
    return 1;
}

} // namespace oV::Roamscan::tool
