#pragma once

#include <filesystem>
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

    /// Where to report about a result: on `err` if one of the outputs is "-", so that it does not get into
    /// the result.
    [[nodiscard]] std::ostream& reportBeside(std::filesystem::path const& output,
                                             std::filesystem::path const& other = {}) const
    {
        return output == "-" || other == "-" ? err : out;
    }
};

void addImport(CLI::App& app, Console& console);
void addExport(CLI::App& app, Console& console);
void addMount(CLI::App& app, Console& console);
void addSimulate(CLI::App& app, Console& console);
void addPlace(CLI::App& app, Console& console);
void addSample(CLI::App& app, Console& console);
void addStill(CLI::App& app, Console& console);
void addLine(CLI::App& app, Console& console);
void addInfo(CLI::App& app, Console& console);
void addPanorama(CLI::App& app, Console& console);
void addExif(CLI::App& app, Console& console);
void addOptions(CLI::App& app, Console& console);

} // namespace oV::Roamscan::tool
