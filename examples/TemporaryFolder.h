#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

/// A folder of its own for an example that writes files; it goes away with them.
class TemporaryFolder
{
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("roamscan-example-" + std::to_string(std::random_device{}())))
    {
        std::filesystem::create_directory(path_);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path file(std::string const& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};
