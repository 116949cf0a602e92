#pragma once

#include <iosfwd>

namespace oV::Roamscan::tool
{

struct CommandDescription;

/// Writes a script for bash that completes the words of a program's command line: commands, options, values
/// of options that have few of them, and files. It uses nothing but bash.
void writeBashCompletion(CommandDescription const& program, std::ostream& out);

/// Writes a function for zsh's completion system, which also shows the descriptions. The file's name is the
/// program's name after an underscore.
void writeZshCompletion(CommandDescription const& program, std::ostream& out);

} // namespace oV::Roamscan::tool
