#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
} // namespace CLI

namespace oV::Roamscan::tool
{

/// Adds an option, or an argument if the name has no "--", whose value is a path.
CLI::Option*
addPath(CLI::App& command, std::string const& name, std::filesystem::path& path, std::string const& help);

/// The same for one or more paths.
CLI::Option* addPaths(CLI::App& command,
                      std::string const& name,
                      std::vector<std::filesystem::path>& paths,
                      std::string const& help);

} // namespace oV::Roamscan::tool
