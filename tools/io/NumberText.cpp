#include "tools/io/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::string_view blanks = " \t";

/// std::from_chars knows no plus sign.
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

std::string_view nextColumn(std::string_view& rest)
{
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    auto const length = std::min(rest.find_first_of(blanks), rest.size());
    std::string_view const column = rest.substr(0, length);
    rest.remove_prefix(length);
    return column;
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

double secondsOfNanoseconds(std::int64_t nanoseconds)
{
    // Converting to double before the division would round twice; reading the decimal number back rounds
    // once.
    constexpr std::size_t decimals = 9;
    std::string digits = std::to_string(nanoseconds);
    std::size_t const sign = nanoseconds < 0 ? 1 : 0;
    if (digits.size() - sign <= decimals) {
        digits.insert(sign, decimals + 1 - (digits.size() - sign), '0');
    }
    digits.insert(digits.size() - decimals, 1, '.');
    return *parseNumber(digits);
}

} // namespace oV::Roamscan::tool
