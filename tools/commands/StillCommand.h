#pragma once

#include "tools/motion/StillStretches.h"

#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

struct StillOptions
{
    std::filesystem::path trajectory;
    StillSettings settings;
    bool json = false; ///< One object instead of a table.
};

/// Tells on `out` when the device of the trajectory stood still.
/// @throws ToolError if a setting is not above 0, the file cannot be read, or there is no usable pose with a
/// time in it
void runStill(StillOptions const& options, std::ostream& out);

} // namespace oV::Roamscan::tool
