#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/detail/ValueText.h>

#include <utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <system_error>

namespace oV::detail
{

namespace
{

constexpr std::string_view nanWithBits = "nan:";
constexpr std::size_t digitsOfBits = 16;

// The number in hexadecimal digits, with leading zeros.
std::string hexadecimal(std::uint64_t number, std::size_t digits)
{
    std::array<char, digitsOfBits> buffer{};
    auto const* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, 16).ptr;
    std::string const text(static_cast<char const*>(buffer.data()), end);
    return std::string(digits - text.size(), '0') + text;
}

bool isHighSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}

bool isLowSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

// Whether a unit outside of a surrogate pair is written as \uXXXX.
bool needsCode(char16_t unit)
{
    bool const isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    bool const breaksLine = unit == 0x2028 || unit == 0x2029;
    bool const isByteOrderMark = unit == 0xFEFF;
    return isControl || breaksLine || isByteOrderMark || isHighSurrogate(unit) || isLowSurrogate(unit);
}

// Appends one unit that is not part of a surrogate pair.
void appendUnit(char16_t unit, std::string& text)
{
    switch (unit) {
    case u'"':
        text += "\\\"";
        break;
    case u'\\':
        text += "\\\\";
        break;
    case u'\n':
        text += "\\n";
        break;
    case u'\r':
        text += "\\r";
        break;
    case u'\t':
        text += "\\t";
        break;
    default:
        if (needsCode(unit)) {
            text += "\\u" + hexadecimal(unit, 4);
        } else {
            utf8::append(static_cast<char32_t>(unit), std::back_inserter(text));
        }
    }
}

std::string quoted(std::u16string_view units)
{
    std::string text = "\"";
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (isHighSurrogate(units[i]) && i + 1 < units.size() && isLowSurrogate(units[i + 1])) {
            char32_t const codePoint =
                0x10000 + ((units[i] & char32_t{0x3FF}) << 10) + (units[i + 1] & char32_t{0x3FF});
            utf8::append(codePoint, std::back_inserter(text));
            ++i;
        } else {
            appendUnit(units[i], text);
        }
    }
    return text + '"';
}

// The NaN of a text "nan:" with its bits.
std::optional<double> nanOfText(std::string_view text)
{
    text.remove_prefix(nanWithBits.size());
    std::uint64_t bits = 0;
    auto const* const end = std::from_chars(text.data(), text.data() + text.size(), bits, 16).ptr;
    if (text.size() != digitsOfBits || end != text.data() + text.size()) {
        return std::nullopt;
    }
    auto const number = std::bit_cast<double>(bits);
    return std::isnan(number) ? std::optional(number) : std::nullopt;
}

// The number of a word that is not a decimal number.
std::optional<double> specialNumber(std::string_view text)
{
    using Limits = std::numeric_limits<double>;
    if (text == "inf") {
        return Limits::infinity();
    }
    if (text == "-inf") {
        return -Limits::infinity();
    }
    if (text == "nan") {
        return Limits::quiet_NaN();
    }
    return text.starts_with(nanWithBits) ? nanOfText(text) : std::nullopt;
}

} // namespace

std::string textOfNumber(double number)
{
    if (std::isnan(number)) {
        auto const bits = std::bit_cast<std::uint64_t>(number);
        bool const isPlain = bits == std::bit_cast<std::uint64_t>(std::numeric_limits<double>::quiet_NaN());
        return isPlain ? "nan" : std::string(nanWithBits) + hexadecimal(bits, digitsOfBits);
    }
    std::array<char, 32> buffer{}; // the longest double has 24 characters
    auto const* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {static_cast<char const*>(buffer.data()), end};
}

std::optional<double> numberOfText(std::string_view text, int& status)
{
    std::size_t const first = text.starts_with('-') ? 1 : 0;
    if (text.size() == first || !isDigit(text[first])) {
        std::optional<double> const special = specialNumber(text);
        if (!special) {
            status = StatusCode::wrongKind;
        }
        return special;
    }
    double number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end != text.data() + text.size()) {
        status = StatusCode::wrongKind;
        return std::nullopt;
    }
    if (error != std::errc{}) {
        status = StatusCode::outOfRange;
        return std::nullopt;
    }
    return number;
}

bool isValueWord(std::string_view word)
{
    int status = StatusCode::ok;
    return word == "true" || word == "false" || word == "null" || numberOfText(word, status).has_value() ||
           status == StatusCode::outOfRange;
}

std::string textOfString(Bv_1_1::String const& string)
{
    return string.isNil() ? "null" : quoted(string.text());
}

std::string textOfKeyword(Bv_1_1::String const& keyword)
{
    std::u16string_view const units = keyword.text();
    bool const isWord =
        !units.empty() && beginsKeyword(units.front()) && std::ranges::all_of(units, continuesKeyword);
    return isWord ? std::string(units.begin(), units.end()) : quoted(units);
}

bool isKeyword(Bv_1_1::String const& keyword) noexcept
{
    constexpr auto endOfBlock = static_cast<char16_t>(ModelFormat::END_OF_BLOCK);
    return !keyword.text().empty() && keyword.text() != std::u16string_view(&endOfBlock, 1);
}

bool appendUtf8(std::string_view utf8, std::u16string& units)
{
    if (!utf8::is_valid(utf8.begin(), utf8.end())) {
        return false;
    }
    utf8::unchecked::utf8to16(utf8.begin(), utf8.end(), std::back_inserter(units));
    return true;
}

} // namespace oV::detail
