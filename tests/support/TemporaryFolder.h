#pragma once

#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace support
{

/// The full name of the running test, usable in a path.
inline std::string nameOfRunningTest()
{
    auto const& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test.test_suite_name()) + "." + test.name();
    std::replace(name.begin(), name.end(), '/', '.'); // in the names of parametrised tests
    return name;
}

/// A temporary folder for the running test. It is removed afterwards.
class TemporaryFolder : public ScratchFolder
{
public:
    TemporaryFolder() : ScratchFolder(nameOfRunningTest()) {}

    TestPath write(std::string const& name, std::string const& bytes) const
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
        for (auto const& entry : std::filesystem::directory_iterator(path() / pathOf(inside))) {
            found.push_back(utf8(entry.path().filename()));
        }
        std::sort(found.begin(), found.end());
        return found;
    }
};

} // namespace support
