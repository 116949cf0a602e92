#pragma once

#include <iosfwd>
#include <string>

namespace oV::Roamscan::tool
{

struct CommandDescription;

/// Writes the manual page of a program, section 1, in roff with the macros of man(7).
void writeManualPage(CommandDescription const& program, std::string const& version, std::ostream& out);

} // namespace oV::Roamscan::tool
