#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

/// Whether a line has nothing but blanks, or begins with '#' or "//".
[[nodiscard]] bool isWithoutData(std::string_view line);

/// Takes the first line from a text, without its end (LF or CR LF).
[[nodiscard]] std::string_view takeLine(std::string_view& text);

/// Reads a text in blocks of whole lines, in bounded memory.
class TextBlocks
{
public:
    static constexpr std::uint64_t allLines = std::numeric_limits<std::uint64_t>::max();

    /// Takes over the input, at the start of a line.
    /// @param lineNumber the number of this line
    /// @param lineCount stop after this many lines with data
    TextBlocks(CloudInput input, std::uint64_t lineNumber, std::uint64_t lineCount = allLines);

    /// Reads the next lines. The number of lines with data is counted only if the reader is to stop after
    /// some.
    /// @return false at the end
    /// @throws ToolError if a line is longer than 64 KiB, if the text ends before `lineCount` lines with data
    /// unless all are read, or if it cannot be read
    [[nodiscard]] bool read(RawBlock& raw);

    /// Gives the input back.
    [[nodiscard]] CloudInput takeInput() && { return std::move(input_); }

private:
    /// Moves the end of the bytes to the end of the last whole line, and keeps the rest for the next block.
    void keepPartOfLine(std::vector<char>& bytes);
    /// Moves the end of the bytes to the end of the last line that is wanted.
    void stopAfterLastLine(RawBlock& raw);

    CloudInput input_;
    std::uint64_t lineNumber_;
    std::uint64_t wanted_;
    std::uint64_t left_;
    std::vector<char> partOfLine_;
};

} // namespace oV::Roamscan::tool
