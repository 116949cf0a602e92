#include "tools/commands/PathOption.h"

#include "tools/console/PathText.h"

#include <CLI/CLI.hpp>

namespace oV::Roamscan::tool
{

CLI::Option*
addPath(CLI::App& command, std::string const& name, std::filesystem::path& path, std::string const& help)
{
    auto const assign = [&path](std::string const& text) { path = pathOfUtf8(text); };
    return command.add_option_function<std::string>(name, assign, help);
}

CLI::Option* addPaths(CLI::App& command,
                      std::string const& name,
                      std::vector<std::filesystem::path>& paths,
                      std::string const& help)
{
    auto const assign = [&paths](std::vector<std::string> const& texts) {
        for (std::string const& text : texts) {
            paths.push_back(pathOfUtf8(text));
        }
    };
    return command.add_option_function<std::vector<std::string>>(name, assign, help);
}

} // namespace oV::Roamscan::tool
