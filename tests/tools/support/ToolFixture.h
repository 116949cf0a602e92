#pragma once

#include "tests/support/TemporaryFolder.h"
#include "tools/CommandLine.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <ios>
#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace support
{

/// What a run of the program left behind.
struct ToolRun
{
    int status = 0;
    std::string out;
    std::string err;
    std::string piped; ///< What was written to the standard output for the name "-"; only by runInPipe().
};

/// Exchanges the buffer of a stream for the lifetime of this object.
class RedirectedStream
{
public:
    RedirectedStream(std::ios& stream, std::streambuf* buffer)
        : stream_(stream), previous_(stream.rdbuf(buffer))
    {}
    RedirectedStream(RedirectedStream const&) = delete;
    RedirectedStream& operator=(RedirectedStream const&) = delete;
    ~RedirectedStream()
    {
        stream_.rdbuf(previous_);
        stream_.clear();
    }

private:
    std::ios& stream_;
    std::streambuf* previous_;
};

/// Tests in a folder of their own, which goes away afterwards.
class ToolFixture : public testing::Test
{
protected:
    [[nodiscard]] TestPath file(std::string const& name) const { return folder_.file(name); }

    TestPath write(std::string const& name, std::string const& bytes) const
    {
        return folder_.write(name, bytes);
    }

    [[nodiscard]] std::string read(std::string const& name) const { return folder_.read(name); }

    /// The names of what is in the folder, in order.
    [[nodiscard]] std::vector<std::string> names() const { return folder_.names(); }

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
        result.status =
            oV::Roamscan::tool::runTool(static_cast<int>(arguments.size()), arguments.data(), out, err);
        result.out = out.str();
        result.err = err.str();
        return result;
    }

    /// Runs the program with a standard input and a standard output for the name "-".
    [[nodiscard]] static ToolRun runInPipe(std::vector<std::string> const& words,
                                           std::string const& input = {})
    {
        std::istringstream in(input);
        std::ostringstream out;
        RedirectedStream const redirectedInput(std::cin, in.rdbuf());
        RedirectedStream const redirectedOutput(std::cout, out.rdbuf());
        ToolRun result = run(words);
        result.piped = out.str();
        return result;
    }

private:
    support::TemporaryFolder folder_;
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

/// A text in quotes, as JSON writes it.
inline std::string quoted(std::string const& text)
{
    return nlohmann::json(text).dump();
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

} // namespace support
