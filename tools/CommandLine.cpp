#include "tools/CommandLine.h"

#include "tools/commands/Commands.h"
#include "tools/console/ClosestWord.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <ostream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr char const* examples = R"(Examples:
  roamscan import --format tum groundtruth.txt walk.trajectory   convert poses in a text file to a trajectory
  roamscan export --format csv walk.trajectory walk.csv          convert a trajectory to a text of poses
  roamscan mount walk.trajectory --set 1=0.1,0,0.25,1,0,0,0      show and set the positions of devices
  roamscan sample --trajectory walk.trajectory --rate 10         print the poses at any times
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

std::vector<std::string> commandNames(CLI::App const& level)
{
    std::vector<std::string> names;
    for (CLI::App const* const command : level.get_subcommands([](CLI::App const* /*any*/) { return true; }))
    {
        if (!command->get_name().empty()) { // groups of options are commands without a name
            names.push_back(command->get_name());
        }
    }
    return names;
}

std::vector<std::string> optionNames(CLI::App const& level)
{
    std::vector<std::string> names;
    for (CLI::Option const* const option : level.get_options()) {
        for (std::string const& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    for (CLI::App const* const group : level.get_subcommands([](CLI::App const* /*any*/) { return true; })) {
        if (group->get_name().empty()) {
            std::ranges::copy(optionNames(*group), std::back_inserter(names));
        }
    }
    return names;
}

/// Says that a word of the command line is not known, and which one may be meant.
std::string unknownWord(CLI::App const& level, std::string word)
{
    std::vector<std::string> known;
    std::string kind = "command";
    if (word.size() > 1 && word.front() == '-') {
        kind = "option";
        known = optionNames(level);
        word = word.substr(0, word.find('='));
    } else if (known = commandNames(level); known.empty()) {
        return "unexpected argument '" + word + "'";
    }
    std::string const meant = closestWord(word, known);
    return "unknown " + kind + " '" + word + "'" + (meant.empty() ? "" : "; did you mean '" + meant + "'?");
}

/// The command of the command line that has an unexpected word, or otherwise the last one.
struct Place
{
    CLI::App const* level;
    std::string name; ///< "roamscan panorama join"
};

Place placeOfFailure(CLI::App const& app)
{
    Place place{&app, app.get_name()};
    while (place.level->remaining().empty() && !place.level->get_subcommands().empty()) {
        place.level = place.level->get_subcommands().front();
        place.name += ' ' + place.level->get_name();
    }
    return place;
}

/// The message about the first word that was not expected; empty if there is none.
std::string unexpectedWord(CLI::App const& level)
{
    std::vector<std::string> words = level.remaining();
    std::erase(words, "--"); // ends the options
    if (words.empty()) {
        return {};
    }
    // The value of an unknown option is unexpected too, so options come first.
    auto const option = std::ranges::find_if(words, [](std::string const& word) { return word[0] == '-'; });
    bool const isCommand = !commandNames(level).empty();
    return unknownWord(level, isCommand || option == words.end() ? words.front() : *option);
}

/// Names a misspelt word rather than what is missing because of it.
std::string explain(CLI::ParseError const& failure, CLI::App const& level)
{
    if (std::string unexpected = unexpectedWord(level); !unexpected.empty()) {
        return unexpected;
    }
    std::vector<std::string> const commands = commandNames(level);
    return commands.empty() ? failure.what() : "no command is given; there are " + listed(commands);
}

int runCommand(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err)
{
    Console console{out, err};
    CLI::App app;
    setUpCommandLine(app, console);
    try {
        app.parse(argumentCount, arguments);   // runs the command
    } catch (CLI::ParseError const& stopped) { // also thrown for --help and --version, which are no failures
        if (stopped.get_exit_code() != 0) {
            Place const place = placeOfFailure(app);
            throw ToolError(explain(stopped, *place.level) + " (see " + place.name + " --help)");
        }
        app.exit(stopped, out, err);
    }
    return console.failed ? 1 : 0;
}

void printFailure(std::ostream& err, std::string const& why)
{
    err << "roamscan: " << oneLine(why) << '\n';
}

} // namespace

void setUpCommandLine(CLI::App& app, Console& console)
{
    app.name("roamscan");
    app.description("Transforms scan points along a trajectory into world coordinates.");
    app.footer(examples);
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a word with a slash in front is a path everywhere
    app.set_version_flag("--version", "roamscan " ROAMSCAN_TOOL_VERSION);
    addImport(app, console);
    addExport(app, console);
    addMount(app, console);
    addSimulate(app, console);
    addPlace(app, console);
    addSample(app, console);
    addStill(app, console);
    addLine(app, console);
    addInfo(app, console);
    addPanorama(app, console);
    addExif(app, console);
    addOptions(app, console);
}

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
