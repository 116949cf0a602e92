#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// The text without blanks and tabs at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// The columns of a line, which are separated by blanks or tabs.
[[nodiscard]] std::vector<std::string_view> columnsOf(std::string_view line);

/// The columns of a line, which are separated by commas, without the blanks around them.
[[nodiscard]] std::vector<std::string_view> commaColumnsOf(std::string_view line);

/// Parses a text that is a finite number, with a decimal point in every locale; nothing if it is anything
/// else.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text);

/// Parses a text that is an integer; nothing if it is anything else or does not fit.
[[nodiscard]] std::optional<std::int64_t> parseInteger(std::string_view text);

/// The shortest text that parseNumber() reads back to the same number, with a decimal point in every locale.
/// Without an exponent from 1e-5 up to 1e17.
[[nodiscard]] std::string shortestText(double number);

/// Seconds as integer nanoseconds, rounded to the nearest; nothing if they do not fit 64 bits.
[[nodiscard]] std::optional<std::string> nanosecondsText(double seconds);

/// Converts nanoseconds to seconds with a single rounding: the double nearest to the decimal number.
[[nodiscard]] double secondsOfNanoseconds(std::int64_t nanoseconds);

} // namespace oV::Roamscan::tool
