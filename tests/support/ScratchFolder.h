#pragma once

#include "tests/support/TestPath.h"

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
            // With a blank, and with letters that a code page may lack.
            auto candidate = std::filesystem::temp_directory_path() /
                             pathOf(name + " Größe 散歩 " + std::to_string(attempt));
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

    [[nodiscard]] TestPath path() const { return TestPath(path_); }

    /// @param name UTF-8
    [[nodiscard]] TestPath file(std::string const& name) const
    {
        return TestPath((path_ / pathOf(name)).make_preferred());
    }

private:
    std::filesystem::path path_;
};

} // namespace support
