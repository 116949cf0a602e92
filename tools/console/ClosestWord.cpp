#include "tools/console/ClosestWord.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace oV::Roamscan::tool
{

namespace
{

/// The Levenshtein distance: the number of letters to insert, delete or replace. Wagner-Fischer algorithm.
std::size_t distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (char const letter : a) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            std::size_t const replaced = diagonal + (letter == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string closestWord(std::string_view word, std::vector<std::string> const& candidates)
{
    constexpr std::size_t longest = 100; // letters of a word; the distance takes quadratic time
    if (word.size() > longest) {
        return {};
    }
    std::string best;
    std::size_t smallest = (word.size() + 1) / 3 + 1;
    for (std::string const& candidate : candidates) {
        std::size_t const found = distance(word, candidate);
        if (found < smallest) {
            smallest = found;
            best = candidate;
        }
    }
    return best;
}

} // namespace oV::Roamscan::tool
