#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace bench
{

/// A temporary folder, removed with all its files at the end of its lifetime.
class ScratchFolder
{
public:
    ScratchFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("roamscan-bench-" + std::to_string(std::random_device{}())))
    {
        std::filesystem::create_directory(path_);
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace bench
