#include "tools/clouds/TextBlocks.h"

#include "tools/console/ToolError.h"
#include "tools/io/LineReader.h"
#include "tools/io/NumberText.h"

#include <algorithm>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t textAtOnce = 1U << 19;

} // namespace

bool isWithoutData(std::string_view line)
{
    std::string_view const content = trimmed(line);
    return content.empty() || content.front() == '#' || content.substr(0, 2) == "//";
}

std::string_view takeLine(std::string_view& text)
{
    std::size_t const length = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

TextBlocks::TextBlocks(CloudInput input, std::uint64_t lineNumber, std::uint64_t lineCount)
    : input_(std::move(input)), lineNumber_(lineNumber), wanted_(lineCount), left_(lineCount)
{}

bool TextBlocks::read(RawBlock& raw)
{
    raw.first = lineNumber_;
    raw.bytes = std::exchange(partOfLine_, {});
    if (left_ > 0 && input_.stream->good()) {
        std::size_t const kept = raw.bytes.size();
        raw.bytes.resize(kept + textAtOnce);
        input_.stream->read(raw.bytes.data() + kept, textAtOnce);
        raw.bytes.resize(kept + static_cast<std::size_t>(input_.stream->gcount()));
    }
    if (input_.stream->bad()) {
        throw fileError(input_.name, "cannot be read beyond line " + std::to_string(lineNumber_));
    }
    if (input_.stream->good()) {
        keepPartOfLine(raw.bytes);
    }
    if (wanted_ != allLines) {
        stopAfterLastLine(raw);
    }
    raw.count = static_cast<std::size_t>(std::ranges::count(raw.bytes, '\n')) +
                (!raw.bytes.empty() && raw.bytes.back() != '\n' ? 1 : 0);
    lineNumber_ += raw.count;
    if (raw.bytes.empty() && left_ > 0 && wanted_ != allLines) {
        throw lineError(input_.name,
                        lineNumber_,
                        "the text ends after " + std::to_string(wanted_ - left_) +
                            " points, but the header promises " + std::to_string(wanted_) +
                            "; the file is cut off or damaged");
    }
    return !raw.bytes.empty();
}

void TextBlocks::keepPartOfLine(std::vector<char>& bytes)
{
    auto const lastEnd = std::find(bytes.rbegin(), bytes.rend(), '\n').base();
    if (static_cast<std::size_t>(bytes.end() - lastEnd) > LineReader::longestLine) {
        std::uint64_t const lines = static_cast<std::uint64_t>(std::ranges::count(bytes, '\n'));
        throw lineError(
            input_.name, lineNumber_ + lines, "the line is longer than 64 KiB; is this a text file?");
    }
    partOfLine_.assign(lastEnd, bytes.end());
    bytes.erase(lastEnd, bytes.end());
}

void TextBlocks::stopAfterLastLine(RawBlock& raw)
{
    std::string_view const all(raw.bytes.data(), raw.bytes.size());
    std::string_view rest = all;
    while (left_ > 0 && !rest.empty()) {
        left_ -= isWithoutData(takeLine(rest)) ? 0 : 1;
    }
    raw.bytes.resize(all.size() - rest.size());
}

} // namespace oV::Roamscan::tool
