#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/detail/TextConversion.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>

namespace Bv_1_1
{

namespace
{

// The shortest decimal form of a number.
template <typename Number>
std::u16string decimalForm(Number number)
{
    std::array<char, 32> buffer{}; // the longest double has 24 characters
    auto const end = std::to_chars(buffer.begin(), buffer.end(), number).ptr;
    return {buffer.begin(), end};
}

// The text as narrow text, without leading and trailing white space; empty if a character is not ASCII.
std::string trimmedAscii(std::u16string_view text)
{
    constexpr std::u16string_view blanks = u" \t\r\n\v\f";
    auto const first = std::min(text.find_first_not_of(blanks), text.size());
    auto const last = text.find_last_not_of(blanks) + 1;
    std::string result;
    for (char16_t const unit : text.substr(first, last - first)) {
        if (unit > 0x7F) {
            return {};
        }
        result.push_back(static_cast<char>(unit));
    }
    return result;
}

template <typename Number>
void parseNumber(std::u16string_view text, Number& target)
{
    std::string const trimmed = trimmedAscii(text);
    std::string_view digits = trimmed;
    if (digits.starts_with('+') && !digits.starts_with("+-")) {
        digits.remove_prefix(1);
    }
    Number number{};
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc{} && end == digits.data() + digits.size()) {
        target = number;
    }
}

} // namespace

struct String::EmptyValue
{
    StringVal header{0};
    char16_t terminator = u'\0';
};

constinit String::EmptyValue String::emptyValue;

constexpr String String::NIL;
constexpr String String::EMPTY{String::Adopted{}, &String::emptyValue.header};

String::String(wchar_t const* text)
{
    if (text != nullptr) {
        value_ = StringVal::constructFromUtf16(oV::Roamscan::detail::utf16FromWide(text));
    }
}

String String::fromNarrow(char const* text)
{
    return adopt(text == nullptr ? nullptr : StringVal::construct(text, -1, -1));
}

String String::fromUtf16(std::u16string_view text)
{
    return adopt(StringVal::constructFromUtf16(text));
}

char const* String::stringAnsi() const
{
    return isNil() ? "" : value_->narrow();
}

int String::compare(wchar_t const* other) const
{
    if (isNil() || other == nullptr) {
        return static_cast<int>(other == nullptr) - static_cast<int>(isNil());
    }
    int const order = text().compare(oV::Roamscan::detail::utf16FromWide(other));
    return order < 0 ? -1 : static_cast<int>(order > 0);
}

String& String::operator<<(String const& other)
{
    if (!other.isNil()) {
        append(other.text());
    }
    return *this;
}

String& String::operator<<(wchar_t const* other)
{
    if (other != nullptr) {
        append(oV::Roamscan::detail::utf16FromWide(other));
    }
    return *this;
}

String& String::operator<<(int number)
{
    append(decimalForm(number));
    return *this;
}

String& String::operator<<(bool value)
{
    append(value ? u"1" : u"0");
    return *this;
}

String& String::operator<<(unsigned long long number)
{
    append(decimalForm(number));
    return *this;
}

String& String::operator+=(double number)
{
    append(decimalForm(number));
    return *this;
}

String const& String::operator>>(bool& target) const
{
    std::string const word = trimmedAscii(text());
    if (word == "1" || word == "true") {
        target = true;
    } else if (word == "0" || word == "false") {
        target = false;
    }
    return *this;
}

String const& String::operator>>(int& target) const
{
    parseNumber(text(), target);
    return *this;
}

String const& String::operator>>(double& target) const
{
    parseNumber(text(), target);
    return *this;
}

String const& String::operator>>(String& target) const
{
    target = *this;
    return *this;
}

// Creates a new value, because copies may share the old one.
void String::append(std::u16string_view text)
{
    *this = adopt(StringVal::constructFromUtf16(this->text(), text));
}

String operator+(wchar_t const* first, String const& second)
{
    String result(first);
    result << second;
    return result;
}

} // namespace Bv_1_1
