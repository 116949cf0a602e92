#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace oV::Roamscan::tool
{

/// The text without blanks and tabs at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Takes the next column off the front of `rest`: columns stand between blanks or tabs. Empty at the end of
/// the line.
[[nodiscard]] std::string_view nextColumn(std::string_view& rest);

/// A finite number that fills the whole text, with a point whatever the locale; nothing if it is none.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text);

/// A whole number that fills the whole text; nothing if it is none or does not fit.
[[nodiscard]] std::optional<std::int64_t> parseInteger(std::string_view text);

/// Nanoseconds as seconds, rounded once: the double nearest to the decimal number.
[[nodiscard]] double secondsOfNanoseconds(std::int64_t nanoseconds);

} // namespace oV::Roamscan::tool
