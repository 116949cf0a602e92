#pragma once

#include "tools/CommandLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// What a run of the program left behind.
struct ToolRun
{
    int status = 0;
    std::string out;
    std::string err;
};

/// Tests in a folder of their own, which goes away afterwards.
class ToolFixture : public testing::Test
{
protected:
    ToolFixture()
    {
        auto const& test = *testing::UnitTest::GetInstance()->current_test_info();
        std::string const name = std::string(test.test_suite_name()) + "." + test.name();
        std::error_code failure;
        for (int attempt = 0; folder_.empty(); ++attempt) {
            auto candidate = std::filesystem::temp_directory_path() / (name + "-" + std::to_string(attempt));
            if (std::filesystem::create_directory(candidate, failure)) {
                folder_ = std::move(candidate);
            } else if (failure) {
                throw std::filesystem::filesystem_error("no folder for the test", candidate, failure);
            }
        }
    }
    ~ToolFixture() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    [[nodiscard]] std::filesystem::path file(std::string const& name) const { return folder_ / name; }

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

    /// The names of what is in the folder, in order.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (auto const& entry : std::filesystem::directory_iterator(folder_)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    /// Runs the program with the words as arguments.
    [[nodiscard]] static ToolRun run(std::vector<std::string> const& words)
    {
        std::vector<char const*> arguments{"roamscan"};
        for (std::string const& word : words) {
            arguments.push_back(word.c_str());
        }
        std::ostringstream out;
        std::ostringstream err;
        ToolRun result;
        result.status = runTool(static_cast<int>(arguments.size()), arguments.data(), out, err);
        result.out = out.str();
        result.err = err.str();
        return result;
    }

private:
    std::filesystem::path folder_;
};

/// The message of the failure that `action` ends with; empty if it does not fail.
template <typename Action>
std::string failureOf(Action&& action)
{
    try {
        action();
    } catch (std::exception const& failure) {
        return failure.what();
    }
    return {};
}

/// How many lines the text has.
inline std::ptrdiff_t lineCount(std::string const& text)
{
    return std::count(text.begin(), text.end(), '\n');
}

/// The last line of a text that ends with a line's end.
inline std::string lastLine(std::string const& text)
{
    std::string const lines = text.substr(0, text.size() - 1);
    return lines.substr(lines.rfind('\n') + 1);
}

} // namespace oV::Roamscan::tool
