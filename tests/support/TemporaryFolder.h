#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

namespace support
{

/// A temporary folder for the running test. It is removed afterwards.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        auto const& test = *testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string(test.test_suite_name()) + "." + test.name();
        std::replace(name.begin(), name.end(), '/', '.'); // in the names of parametrised tests
        std::error_code failure;
        for (int attempt = 0; path_.empty(); ++attempt) {
            auto candidate = std::filesystem::temp_directory_path() / (name + "-" + std::to_string(attempt));
            if (std::filesystem::create_directory(candidate, failure)) {
                path_ = std::move(candidate);
            } else if (failure) {
                throw std::filesystem::filesystem_error("no folder for the test", candidate, failure);
            }
        }
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

    [[nodiscard]] std::filesystem::path file(std::string const& name) const { return path_ / name; }

    std::filesystem::path write(std::string const& name, std::string const& bytes) const
    {
        std::ofstream(file(name), std::ios::binary) << bytes;
        return file(name);
    }

    [[nodiscard]] std::string read(std::string const& name) const
    {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    /// The sorted names of all entries in the folder and its sub-folders.
    [[nodiscard]] std::vector<std::string> names(std::string const& inside = {}) const
    {
        std::vector<std::string> found;
        for (auto const& entry : std::filesystem::directory_iterator(path_ / inside)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

private:
    std::filesystem::path path_;
};

} // namespace support
