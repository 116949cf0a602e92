/// @file
/// Writes the manual page (roamscan.1) and the completions for bash (roamscan) and zsh (_roamscan) to a
/// folder.

#include "tools/CommandLine.h"
#include "tools/commands/Commands.h"
#include "tools/manual/CommandTree.h"
#include "tools/manual/Completion.h"
#include "tools/manual/ManualPage.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>

int main(int argc, char** argv)
{
    using namespace oV::Roamscan::tool;
    if (argc != 2) {
        std::cerr << "usage: roamscan_manual FOLDER\n";
        return 2;
    }
    try {
        Console console{std::cout, std::cerr};
        CLI::App app;
        setUpCommandLine(app, console);
        CommandDescription const program = describe(app);

        std::filesystem::path const folder = argv[1];
        std::filesystem::create_directories(folder);
        std::ofstream page;
        std::ofstream bash;
        std::ofstream zsh;
        for (std::ofstream* const file : {&page, &bash, &zsh}) {
            file->exceptions(std::ios::failbit | std::ios::badbit);
        }
        page.open(folder / (program.name + ".1"));
        writeManualPage(program, ROAMSCAN_TOOL_VERSION, page);
        page.close();
        bash.open(folder / program.name);
        writeBashCompletion(program, bash);
        bash.close();
        zsh.open(folder / ('_' + program.name));
        writeZshCompletion(program, zsh);
        zsh.close();
        return 0;
    } catch (std::exception const& failure) {
        std::cerr << "roamscan_manual: " << failure.what() << '\n';
        return 1;
    }
}
