#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace oV::Roamscan::tool
{

/// An option of a command, or a positional argument.
struct ArgumentDescription
{
    std::vector<std::string> names;   ///< "-h", "--help"; the one name of a positional argument, "FILE".
    std::string value;                ///< What follows an option, "FLOAT"; empty if nothing does.
    std::vector<std::string> choices; ///< The allowed values; empty if there are too many to list.
    bool isFile = false;              ///< Whether the value may be a file.
    bool isRequired = false;
    bool isRepeatable = false; ///< Whether it may be given several times.
    std::string description;
};

/// A command with its options and the commands within it.
struct CommandDescription
{
    std::string name; ///< With the commands that it is part of: "roamscan panorama join".
    std::string description;
    std::string footer; ///< The text after the options: details and examples.
    std::vector<ArgumentDescription> options;
    std::vector<ArgumentDescription> positionals;
    std::vector<CommandDescription> commands;

    /// The last word of the name.
    [[nodiscard]] std::string lastName() const;
    /// The words on the command line: "roamscan line [OPTIONS] OUT".
    [[nodiscard]] std::string synopsis() const;
};

/// Describes a command line, from which the manual page and the completions are made.
[[nodiscard]] CommandDescription describe(CLI::App const& app);

} // namespace oV::Roamscan::tool
