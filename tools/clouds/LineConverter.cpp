#include "tools/clouds/LineConverter.h"

#include "tools/clouds/TextBlocks.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

/// Why a line cannot be converted; the caller adds the name and the number of the line.
class BadLine : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

std::string_view withoutQuotes(std::string_view text)
{
    bool const quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

template <typename Number>
void convertColumn(std::string_view column, Field const& field, char* record)
{
    if (column.size() > 1 && column[0] == '+' && column[1] != '-') { // std::from_chars accepts no plus sign
        column.remove_prefix(1);
    }
    Number number{};
    if (column.empty() && isFloating(field.type)) {
        number = std::numeric_limits<Number>::quiet_NaN();
    } else {
        auto const [end, failure] = std::from_chars(column.data(), column.data() + column.size(), number);
        if (failure != std::errc() || end != column.data() + column.size()) {
            throw BadLine(excerpt(column) + " is no number of the type " + nameOf(field.type) + " (" +
                          plain(field.name) + ")");
        }
    }
    store(record + field.offset, number);
}

std::size_t countColumns(std::string_view line, Separator separator)
{
    std::size_t count = 0;
    while (line.data() != nullptr) {
        static_cast<void>(takeColumn(line, separator));
        ++count;
    }
    return count;
}

} // namespace

std::string_view takeColumn(std::string_view& line, Separator separator)
{
    bool const byBlanks = separator == Separator::Blanks;
    if (byBlanks) {
        line = trimmed(line);
    }
    auto const isEnd = [&](char c) {
        return byBlanks ? c == ' ' || c == '\t' : c == static_cast<char>(separator);
    };
    auto const length = static_cast<std::size_t>(std::ranges::find_if(line, isEnd) - line.begin());
    std::string_view const column = line.substr(0, length);
    if (length == line.size()) {
        line = {};
    } else {
        line.remove_prefix(length + 1);
    }
    return withoutQuotes(trimmed(column));
}

LineConverter::LineConverter(std::filesystem::path name, PointLayout layout, Separator separator)
    : name_(std::move(name)), layout_(std::move(layout)), separator_(separator)
{}

void LineConverter::convert(RawBlock const& raw, PointBlock& points) const
{
    // A line of data takes a byte for each column at least, so blank lines cost no memory.
    points.resize(std::min(raw.count, raw.bytes.size() / layout_.fields().size() + 1), layout_);
    points.count = 0;
    std::uint64_t number = raw.first;
    std::string_view text(raw.bytes.data(), raw.bytes.size());
    for (; !text.empty(); ++number) {
        std::string_view const line = takeLine(text);
        if (isWithoutData(line)) {
            continue;
        }
        try {
            convertLine(line, points.records.data() + points.count * layout_.stride());
        } catch (BadLine const& bad) {
            throw lineError(name_, number, bad.what());
        }
        ++points.count;
    }
    points.records.resize(points.count * layout_.stride());
}

void LineConverter::convertLine(std::string_view line, char* record) const
{
    std::string_view rest = separator_ == Separator::Blanks ? trimmed(line) : line;
    for (Field const& field : layout_.fields()) {
        if (rest.data() == nullptr) {
            throw BadLine(std::to_string(countColumns(trimmed(line), separator_)) + " columns instead of " +
                          std::to_string(layout_.fields().size()) + "; is the line cut off?");
        }
        std::string_view const column = takeColumn(rest, separator_);
        withType(field.type, [&](auto zero) { convertColumn<decltype(zero)>(column, field, record); });
    }
    if (rest.data() != nullptr) {
        throw BadLine(std::to_string(countColumns(trimmed(line), separator_)) + " columns instead of " +
                      std::to_string(layout_.fields().size()));
    }
}

} // namespace oV::Roamscan::tool
