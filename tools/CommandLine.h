#pragma once

#include <iosfwd>

namespace CLI
{
class App;
}

namespace oV::Roamscan::tool
{

struct Console;

/// Adds the commands with their options and help. The manual page and the completions are made from them too.
/// @param console where the commands write to; it must outlive the application
void setUpCommandLine(CLI::App& app, Console& console);

/// Runs the program: results go to `out`, a failure is one line on `err`. Nothing is thrown.
/// @return the exit status: 0, or 1 for any failure
[[nodiscard]] int
runTool(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err) noexcept;

} // namespace oV::Roamscan::tool
