#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <optional>
#include <string>
#include <string_view>

/// The text of single values and keywords in the text forms of ModelFormat.
namespace oV::detail
{

/// The shortest decimal text of the number, or "inf", "-inf", "nan", "nan:" and the bits.
[[nodiscard]] std::string textOfNumber(double number);

/// The inverse of textOfNumber(), for any decimal text.
/// @param status receives the code of a failure, otherwise unchanged
/// @return nothing if the text is not a number (StatusCode::wrongKind) or is out of the range of a double
///     (StatusCode::outOfRange)
[[nodiscard]] std::optional<double> numberOfText(std::string_view text, int& status);

/// Whether the word is a value: a bool, a number of any size, or null.
[[nodiscard]] bool isValueWord(std::string_view word);

/// The text in quotes with its escapes; "null" for NIL.
[[nodiscard]] std::string textOfString(Bv_1_1::String const& string);

/// The keyword as a word if the grammar allows it, otherwise in quotes.
[[nodiscard]] std::string textOfKeyword(Bv_1_1::String const& keyword);

/// Whether this is a valid keyword: not NIL, not empty and not the end of a block.
[[nodiscard]] bool isKeyword(Bv_1_1::String const& keyword) noexcept;

/// Appends UTF-8 to UTF-16.
/// @return false if it is malformed; `units` is then unchanged
[[nodiscard]] bool appendUtf8(std::string_view utf8, std::u16string& units);

/// Whether the byte may be the first of a keyword that is a word.
[[nodiscard]] constexpr bool beginsKeyword(int byte) noexcept
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
}

[[nodiscard]] constexpr bool isDigit(int byte) noexcept
{
    return byte >= '0' && byte <= '9';
}

/// Whether the byte may be part of a keyword that is a word.
[[nodiscard]] constexpr bool continuesKeyword(int byte) noexcept
{
    return beginsKeyword(byte) || isDigit(byte);
}

/// Whether the byte may be part of a value that is neither a string nor a list.
[[nodiscard]] constexpr bool isOfWord(int byte) noexcept
{
    return continuesKeyword(byte) || byte == '.' || byte == '+' || byte == '-' || byte == ':';
}

/// The value of a hexadecimal digit, -1 for any other byte.
[[nodiscard]] constexpr int hexadecimalDigit(int byte) noexcept
{
    if (isDigit(byte)) {
        return byte - '0';
    }
    if (byte >= 'a' && byte <= 'f') {
        return byte - 'a' + 10;
    }
    return byte >= 'A' && byte <= 'F' ? byte - 'A' + 10 : -1;
}

} // namespace oV::detail
