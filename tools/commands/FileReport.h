#pragma once

#include "tools/commands/Commands.h"
#include "tools/console/JsonText.h"

#include <filesystem>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// Describes a file as a JSON object.
using DescribeFile = Json(std::filesystem::path const& file);

/// Prints the descriptions of files as text.
using PrintDescriptions = void(std::vector<Json> const& descriptions, std::ostream& out);

/// Makes a command describe several files: adds the arguments FILE..., with this help, and the flag --json,
/// which prints one JSON array with an object for each file instead of text. A file that cannot be described
/// is one line on Console::err and an object with its "error"; the others are described nevertheless.
void addFileReport(CLI::App& command,
                   std::string const& fileHelp,
                   DescribeFile& describe,
                   PrintDescriptions& print,
                   Console& console);

} // namespace oV::Roamscan::tool
