#pragma once

#include "bench/workload/ProcessMemory.h"
#include "tests/support/ScratchFolder.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench
{

/// The path of a file in a temporary folder of this process. The folder is removed at the end.
[[nodiscard]] inline std::string scratchFile(std::string const& name)
{
    static support::ScratchFolder const folder("roamscan-bench");
    return folder.file(name).string();
}

/// The same. A child process writes the file when it is first asked for, so that this process stays small.
[[nodiscard]] inline std::string writtenFile(std::string const& name,
                                             std::function<void(std::string const& path)> const& write)
{
    std::string path = scratchFile(name);
    if (!std::filesystem::exists(path)) {
        inChild([&] {
            write(path);
            return 0.0;
        });
    }
    return path;
}

/// The bytes of a file.
[[nodiscard]] inline std::vector<char> wholeFile(std::string const& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::vector<char> bytes(static_cast<std::size_t>(std::filesystem::file_size(path)));
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw std::runtime_error("cannot read " + path);
    }
    return bytes;
}

} // namespace bench
