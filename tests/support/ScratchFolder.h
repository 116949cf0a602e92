#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace support
{

/// A temporary folder. It is removed with all its files at the end of its lifetime.
class ScratchFolder
{
public:
    /// @param name  the folder's name starts with it
    explicit ScratchFolder(std::string const& name)
    {
        std::error_code failure;
        for (int attempt = 0; path_.empty(); ++attempt) {
            auto candidate = std::filesystem::temp_directory_path() / (name + "-" + std::to_string(attempt));
            if (std::filesystem::create_directory(candidate, failure)) {
                path_ = std::move(candidate);
            } else if (failure) {
                throw std::filesystem::filesystem_error("no temporary folder", candidate, failure);
            }
        }
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

    [[nodiscard]] std::filesystem::path file(std::string const& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

} // namespace support
