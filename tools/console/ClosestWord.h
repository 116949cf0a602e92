#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// The candidate that a misspelt word most likely stands for: the one at the smallest Levenshtein distance.
/// Empty if more than about a third of the letters differ.
[[nodiscard]] std::string closestWord(std::string_view word, std::vector<std::string> const& candidates);

} // namespace oV::Roamscan::tool
