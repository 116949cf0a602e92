#pragma once

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Runs the program: results go to `out`, a failure is one line on `err`. Nothing is thrown.
/// @return the exit status: 0, or 1 for any failure
[[nodiscard]] int
runTool(int argumentCount, char const* const* arguments, std::ostream& out, std::ostream& err) noexcept;

} // namespace oV::Roamscan::tool
