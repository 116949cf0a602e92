#include "tools/manual/CommandTree.h"

#include <CLI/CLI.hpp>

#include <regex>
#include <sstream>

namespace oV::Roamscan::tool
{

namespace
{

constexpr int mostListedNumbers = 16;

/// The values that the option's checks list: "TEXT:{tum,euroc}" or "INT in [0 - 3]".
std::vector<std::string> choicesOf(std::string const& type)
{
    std::vector<std::string> choices;
    std::smatch found;
    if (std::regex_search(type, found, std::regex(R"(\{([^{}]*)\})"))) {
        std::istringstream list(found[1].str());
        for (std::string choice; std::getline(list, choice, ',');) {
            choices.push_back(choice);
        }
    } else if (std::regex_search(type, found, std::regex(R"(in \[([0-9]{1,3}) - ([0-9]{1,3})\])"))) {
        int const last = std::stoi(found[2]);
        for (int i = std::stoi(found[1]); i <= last && last < mostListedNumbers; ++i) {
            choices.push_back(std::to_string(i));
        }
    }
    return choices;
}

ArgumentDescription describe(CLI::Option const& option)
{
    ArgumentDescription result;
    for (std::string const& name : option.get_snames()) {
        result.names.push_back("-" + name);
    }
    for (std::string const& name : option.get_lnames()) {
        result.names.push_back("--" + name);
    }
    if (option.get_positional()) {
        result.names = {option.get_name(true)};
    }
    std::string const type = option.get_type_name();
    if (option.get_type_size() != 0) {
        result.value = type.substr(0, type.find(':'));
        result.choices = choicesOf(type);
        result.isFile = result.value == "TEXT" && result.choices.empty();
    }
    result.isRequired = option.get_required();
    result.isRepeatable = option.get_expected_max() > 1;
    result.description = option.get_description();
    return result;
}

/// Adds the options of a command, or of a group of options. A group has the help option of its command too.
void addOptions(CLI::App const& level, CommandDescription& result)
{
    bool const isGroup = level.get_name().empty();
    for (CLI::Option const* const option : level.get_options()) {
        if (isGroup && option == level.get_help_ptr()) {
            continue;
        }
        (option->get_positional() ? result.positionals : result.options).push_back(describe(*option));
    }
}

CommandDescription describe(CLI::App const& level, std::string const& name)
{
    CommandDescription result{name, level.get_description(), level.get_footer(), {}, {}, {}};
    addOptions(level, result);
    for (CLI::App const* const part : level.get_subcommands([](CLI::App const* /*any*/) { return true; })) {
        if (part->get_name().empty()) { // a group of options
            addOptions(*part, result);
        } else {
            result.commands.push_back(describe(*part, name + ' ' + part->get_name()));
        }
    }
    return result;
}

} // namespace

std::string CommandDescription::lastName() const
{
    return name.substr(name.rfind(' ') + 1);
}

std::string CommandDescription::synopsis() const
{
    std::string words = name + " [OPTIONS]";
    for (ArgumentDescription const& argument : positionals) {
        std::string const word = argument.names.front() + (argument.isRepeatable ? "..." : "");
        words += argument.isRequired ? ' ' + word : " [" + word + ']';
    }
    return commands.empty() ? words : words + " COMMAND";
}

CommandDescription describe(CLI::App const& app)
{
    return describe(app, app.get_name());
}

} // namespace oV::Roamscan::tool
