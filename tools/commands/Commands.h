#pragma once

#include <iosfwd>

namespace CLI
{
class App;
}

/// The commands of the program. Each function adds one command with its options and help to the application;
/// the command runs when the application has parsed a command line that names it. A command that fails
/// throws, most often a ToolError, and leaves no incomplete output.
namespace oV::Roamscan::tool
{

/// Where the commands write to.
struct Console
{
    std::ostream& out;   ///< The results.
    std::ostream& err;   ///< One line for each file that failed while the command went on.
    bool failed = false; ///< Whether there was such a file.
};

void addImport(CLI::App& app, Console& console);
void addSimulate(CLI::App& app, Console& console);
void addPlace(CLI::App& app, Console& console);
void addStill(CLI::App& app, Console& console);
void addLine(CLI::App& app, Console& console);
void addInfo(CLI::App& app, Console& console);
void addPanorama(CLI::App& app, Console& console);
void addExif(CLI::App& app, Console& console);
void addOptions(CLI::App& app, Console& console);

} // namespace oV::Roamscan::tool
