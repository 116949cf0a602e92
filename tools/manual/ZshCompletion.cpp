#include "tools/manual/CommandTree.h"
#include "tools/manual/Completion.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

/// A text within single quotes, in which some characters get a backslash.
std::string quoted(std::string_view text, std::string_view special)
{
    std::string result;
    for (char const c : text) {
        if (c == '\'') {
            result += "'\\''";
        } else if (special.find(c) != std::string_view::npos) {
            result += {'\\', c};
        } else {
            result += c;
        }
    }
    return result;
}

/// The function of a command: "_roamscan_panorama_join".
std::string functionOf(CommandDescription const& command)
{
    std::string name = '_' + command.name;
    std::ranges::replace(name, ' ', '_');
    return name;
}

/// ":FLOAT: ", ":FILE:_files" or ":FORMAT:(tum euroc)".
std::string valueOf(ArgumentDescription const& argument, std::string_view value)
{
    std::string action = argument.isFile ? "_files" : " ";
    if (!argument.choices.empty()) {
        action = "(";
        for (std::string const& choice : argument.choices) {
            action += (action.size() == 1 ? "" : " ") + choice;
        }
        action += ')';
    }
    return ':' + quoted(value, ":\\") + ':' + action;
}

void writeOption(ArgumentDescription const& option, std::ostream& out)
{
    for (std::string const& name : option.names) {
        bool const isLong = name.starts_with("--");
        out << " \\\n        '" << (option.isRepeatable ? "*" : "") << name
            << (option.value.empty() ? "" : (isLong ? "=" : "+")) << '['
            << quoted(option.description, "[]:\\") << ']'
            << (option.value.empty() ? "" : valueOf(option, option.value)) << '\'';
    }
}

/// The functions of the parts of a command come after its own.
void writeFunction(CommandDescription const& command, std::ostream& out)
{
    out << functionOf(command) << "()\n{\n";
    if (!command.commands.empty()) {
        out << "    local line state\n";
    }
    out << "    _arguments" << (command.commands.empty() ? "" : " -C");
    for (ArgumentDescription const& option : command.options) {
        writeOption(option, out);
    }
    for (ArgumentDescription const& positional : command.positionals) {
        out << " \\\n        '" << (positional.isRepeatable ? "*" : "")
            << valueOf(positional, positional.names.front()) << '\'';
    }
    if (!command.commands.empty()) {
        out << " \\\n        '1: :->command' \\\n        '*:: :->arguments'\n    case $state in\n"
            << "        command)\n            _values command";
        for (CommandDescription const& part : command.commands) {
            out << " \\\n                '" << part.lastName() << '[' << quoted(part.description, "[]:\\")
                << "]'";
        }
        out << "\n            ;;\n        arguments)\n            case $line[1] in\n";
        for (CommandDescription const& part : command.commands) {
            out << "                " << part.lastName() << ") " << functionOf(part) << " ;;\n";
        }
        out << "            esac\n            ;;\n    esac";
    }
    out << "\n}\n\n";
    for (CommandDescription const& part : command.commands) {
        writeFunction(part, out);
    }
}

} // namespace

void writeZshCompletion(CommandDescription const& program, std::ostream& out)
{
    out << "#compdef " << program.name << "\n# Made from the description of the program's command line.\n\n";
    writeFunction(program, out);
    out << functionOf(program) << " \"$@\"\n";
}

} // namespace oV::Roamscan::tool
