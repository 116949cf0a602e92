#include "tools/io/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::string_view blanks = " \t";

/// std::from_chars does not accept a plus sign.
std::string_view withoutPlus(std::string_view text)
{
    bool const plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return plus ? text.substr(1) : text;
}

template <typename Number>
std::optional<Number> parseWhole(std::string_view text)
{
    text = withoutPlus(text);
    Number value{};
    auto const [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> columnsOf(std::string_view line)
{
    std::vector<std::string_view> columns;
    for (line = trimmed(line); !line.empty(); line = trimmed(line)) {
        auto const length = std::min(line.find_first_of(blanks), line.size());
        columns.push_back(line.substr(0, length));
        line.remove_prefix(length);
    }
    return columns;
}

std::vector<std::string_view> commaColumnsOf(std::string_view line)
{
    std::vector<std::string_view> columns;
    for (auto comma = line.find(','); comma != std::string_view::npos; comma = line.find(',')) {
        columns.push_back(trimmed(line.substr(0, comma)));
        line.remove_prefix(comma + 1);
    }
    columns.push_back(trimmed(line));
    return columns;
}

std::optional<double> parseNumber(std::string_view text)
{
    auto const value = parseWhole<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<std::int64_t> parseInteger(std::string_view text)
{
    return parseWhole<std::int64_t>(text);
}

std::string shortestText(double number)
{
    double const magnitude = std::abs(number);
    bool const isPlain = magnitude == 0.0 || (magnitude >= 1e-5 && magnitude < 1e17);
    std::array<char, 32> text{};
    char* const start = text.data();
    char* const end = start + text.size();
    auto const result = isPlain ? std::to_chars(start, end, number, std::chars_format::fixed)
                                : std::to_chars(start, end, number);
    return {start, result.ptr};
}

std::optional<std::string> nanosecondsText(double seconds)
{
    constexpr double largest = 9.2e9; // seconds; 2^63 ns are 9.22e9 s
    if (!(std::abs(seconds) <= largest)) {
        return std::nullopt;
    }
    // A product would round twice. Nine decimals are rounded once, and are nanoseconds without the point.
    constexpr int decimals = 9;
    std::array<char, 32> buffer{};
    char* const end =
        std::to_chars(
            buffer.data(), buffer.data() + buffer.size(), seconds, std::chars_format::fixed, decimals)
            .ptr;
    std::string text(buffer.data(), end);
    text.erase(text.size() - decimals - 1, 1);
    bool const isNegative = text.front() == '-';
    std::size_t const sign = isNegative ? 1 : 0;
    std::size_t const first = std::min(text.find_first_not_of('0', sign), text.size() - 1);
    text.erase(sign, first - sign);
    return text == "-0" ? "0" : text;
}

double secondsOfNanoseconds(std::int64_t nanoseconds)
{
    // Conversion and division would round twice; parsing the decimal number rounds once.
    return *parseNumber(std::to_string(nanoseconds) + "e-9");
}

} // namespace oV::Roamscan::tool
