#include "tools/manual/CommandTree.h"
#include "tools/manual/Completion.h"

#include <ostream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

// The words that come before it are `path`, the command, and `previous`, the word before the one that is
// completed.
constexpr char const* head = R"(
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} i
    local path=@ words='' files=''
    COMPREPLY=()

    # bash has three words for --option=value.
    if [[ $word == = ]]; then
        word=''
    elif [[ $previous == = && COMP_CWORD -gt 1 ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
)";

constexpr char const* tail = R"(
    local IFS=$'\n'
    if [[ -n $words ]]; then
        COMPREPLY=($(IFS=' ' && compgen -W "$words" -- "$word"))
    fi
    if [[ -n $files && ($word != -* || -z $words) ]]; then
        compopt -o filenames 2>/dev/null
        COMPREPLY+=($(compgen -f -- "$word"))
    fi
}

)";

std::string joined(std::vector<std::string> const& words)
{
    std::string text;
    for (std::string const& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// The rows of a table by command, one command after its parts.
template <class Row>
void forEachCommand(CommandDescription const& command, Row const& row)
{
    row(command);
    for (CommandDescription const& part : command.commands) {
        forEachCommand(part, row);
    }
}

/// What may follow an option that has a value.
void writeValues(CommandDescription const& command, std::ostream& out)
{
    for (ArgumentDescription const& option : command.options) {
        if (option.value.empty()) {
            continue;
        }
        std::string pattern;
        for (std::string const& name : option.names) {
            pattern += (pattern.empty() ? "'" : " | '") + command.name + ' ' + name + '\'';
        }
        out << "        " << pattern << ") isValue=1";
        if (!option.choices.empty()) {
            out << " words='" << joined(option.choices) << '\'';
        }
        out << (option.isFile ? " files=1 ;;\n" : " ;;\n");
    }
}

/// The options, commands and files of a command.
void writeWords(CommandDescription const& command, std::ostream& out)
{
    std::vector<std::string> options;
    for (ArgumentDescription const& option : command.options) {
        options.insert(options.end(), option.names.begin(), option.names.end());
    }
    std::vector<std::string> commands;
    for (CommandDescription const& part : command.commands) {
        commands.push_back(part.lastName());
    }
    out << "            '" << command.name << "') options='" << joined(options) << '\'';
    if (!commands.empty()) {
        out << " words='" << joined(commands) << '\'';
    }
    out << (command.positionals.empty() ? " ;;\n" : " files=1 ;;\n");
}

} // namespace

void writeBashCompletion(CommandDescription const& program, std::ostream& out)
{
    std::string const& name = program.name;
    std::string start = head;
    start.replace(start.find('@'), 1, name);
    out << "# Completion of " << name << " for bash, made from the description of its command line.\n\n"
        << '_' << name << "()\n{" << start << "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
        << "        case \"$path ${COMP_WORDS[i]}\" in\n";
    forEachCommand(program, [&](CommandDescription const& command) {
        if (&command != &program) {
            out << "            '" << command.name << "') path+=\" ${COMP_WORDS[i]}\" ;;\n";
        }
    });
    out << "        esac\n    done\n\n    local isValue='' options=''\n    case \"$path $previous\" in\n";
    forEachCommand(program, [&](CommandDescription const& command) { writeValues(command, out); });
    out << "    esac\n    if [[ -z $isValue ]]; then\n        case $path in\n";
    forEachCommand(program, [&](CommandDescription const& command) { writeWords(command, out); });
    out << "        esac\n        [[ $word != -* ]] || words=$options\n    fi\n"
        << tail << "complete -F _" << name << ' ' << name << '\n';
}

} // namespace oV::Roamscan::tool
