#include "tools/commands/FileReport.h"

#include "tools/commands/PathOption.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <memory>
#include <ostream>

namespace oV::Roamscan::tool
{

void addFileReport(CLI::App& command,
                   std::string const& fileHelp,
                   DescribeFile& describe,
                   PrintDescriptions& print,
                   Console& console)
{
    auto const files = std::make_shared<std::vector<std::filesystem::path>>();
    auto const asJson = std::make_shared<bool>(false);
    addPaths(command, "FILE", *files, fileHelp)->required();
    command.add_flag("--json", *asJson, "Print one JSON array with an object for each file");
    command.callback([files, asJson, &describe, &print, &console] {
        Json document = Json::array();
        std::vector<Json> descriptions;
        for (std::filesystem::path const& file : *files) {
            try {
                descriptions.push_back(describe(file));
                document.push_back(descriptions.back());
            } catch (std::exception const& failure) {
                console.failed = true;
                console.err << "roamscan: " << oneLine(failure.what()) << '\n';
                document.push_back({{"file", utf8(file)}, {"error", failure.what()}});
            }
        }
        if (*asJson) {
            printJson(document, console.out);
        } else {
            print(descriptions, console.out);
        }
    });
}

} // namespace oV::Roamscan::tool
