#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// A number with a fixed count of decimals, and a decimal point in every locale.
[[nodiscard]] std::string fixed(double value, int decimals);

/// The text as part of one line on a terminal: control characters become '?'.
[[nodiscard]] std::string oneLine(std::string_view text);

/// The text as plain ASCII without control characters; each byte of anything else becomes '?'.
[[nodiscard]] std::string plain(std::string_view text);

/// The beginning of a text from a file in quotes, for a message.
[[nodiscard]] std::string excerpt(std::string_view text);

/// "1 node", "2 nodes".
[[nodiscard]] std::string counted(std::uint64_t count, char const* one, char const* many);

/// "a", "a and b", "a, b and c"; "none" for an empty list.
[[nodiscard]] std::string listed(std::vector<std::string> const& items);

} // namespace oV::Roamscan::tool
