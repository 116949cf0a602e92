#include "tools/manual/ManualPage.h"

#include "tools/manual/CommandTree.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <sstream>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

/// Text in which roff sees no requests and escapes, and whose hyphens can be copied as such.
std::string escaped(std::string_view text)
{
    std::string result;
    bool atStartOfLine = true;
    for (char const c : text) {
        if (atStartOfLine && (c == '.' || c == '\'')) {
            result += "\\&";
        }
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else {
            result += c;
        }
        atStartOfLine = c == '\n';
    }
    return result;
}

std::string bold(std::string_view text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text)
{
    return "\\fI" + escaped(text) + "\\fR";
}

/// Lines as they are. Empty ones at the end are left out.
void writeLines(std::string_view text, std::ostream& out)
{
    std::istringstream lines{std::string(text.substr(0, text.find_last_not_of('\n') + 1))};
    out << ".nf\n";
    for (std::string line; std::getline(lines, line);) {
        out << (line.empty() ? ".sp" : escaped(line)) << '\n';
    }
    out << ".fi\n";
}

void writeArguments(std::vector<ArgumentDescription> const& arguments, std::ostream& out)
{
    for (ArgumentDescription const& argument : arguments) {
        out << ".TP\n";
        bool const isPositional = argument.names.front().front() != '-';
        for (std::size_t i = 0; i < argument.names.size(); ++i) {
            std::string const& name = argument.names[i];
            out << (i == 0 ? "" : ", ") << (isPositional ? italic(name) : bold(name));
        }
        if (!isPositional && !argument.value.empty()) {
            out << ' ' << italic(argument.value);
        }
        out << '\n' << escaped(argument.description);
        if (!isPositional && argument.isRequired) {
            out << " (required)";
        }
        out << '\n';
    }
}

void writeCommand(CommandDescription const& command, std::ostream& out)
{
    out << ".SS " << escaped(command.synopsis()) << '\n' << escaped(command.description) << ".\n";
    writeArguments(command.positionals, out);
    writeArguments(command.options, out);
    if (!command.footer.empty()) {
        out << ".PP\n";
        writeLines(command.footer, out);
    }
    for (CommandDescription const& part : command.commands) {
        writeCommand(part, out);
    }
}

std::string upperCase(std::string text)
{
    std::ranges::transform(
        text, text.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// "Transforms points." becomes "transforms points", as the line of the name has it.
std::string phrase(std::string sentence)
{
    sentence.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(sentence.front())));
    if (sentence.ends_with('.')) {
        sentence.pop_back();
    }
    return sentence;
}

} // namespace

void writeManualPage(CommandDescription const& program, std::string const& version, std::ostream& out)
{
    std::string const& name = program.name;
    out << ".TH " << escaped(upperCase(name)) << " 1 \"\" \"" << escaped(name + ' ' + version)
        << "\" \"User Commands\"\n"
        << ".SH NAME\n"
        << escaped(name) << " \\- " << escaped(phrase(program.description)) << '\n'
        << ".SH SYNOPSIS\n.nf\n";
    for (CommandDescription const& command : program.commands) {
        out << escaped(command.synopsis()) << '\n';
    }
    out << ".fi\n.SH DESCRIPTION\n"
        << escaped(program.description) << "\nThe options of a command are printed by\n"
        << bold(name + " COMMAND --help") << ".\n.SH OPTIONS\n";
    writeArguments(program.options, out);
    out << ".SH COMMANDS\n";
    for (CommandDescription const& command : program.commands) {
        writeCommand(command, out);
    }
    out << ".SH EXIT STATUS\n0, or 1 for any failure.\n";
    if (!program.footer.empty()) {
        out << ".SH EXAMPLES\n";
        std::string_view const heading = "Examples:\n";
        std::string_view const text = program.footer;
        writeLines(text.substr(text.starts_with(heading) ? heading.size() : 0), out);
    }
}

} // namespace oV::Roamscan::tool
