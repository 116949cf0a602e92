#pragma once

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

/// Shared by the programs that write the seeds of a target.
namespace fuzz
{

/// Writes an input: the byte that selects what the rest is, and the rest.
inline void save(std::filesystem::path const& path, char mode, std::string const& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file << mode << bytes;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

/// The main function of such a program. Calls `saveAll` with the folder that the command line names.
int runSeeds(int argc, char** argv, auto const& saveAll)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    try {
        saveAll(std::filesystem::path(argv[1]));
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}

} // namespace fuzz
