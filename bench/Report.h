#pragma once

#include "bench/Measurement.h"

#include <string>
#include <vector>

namespace bench
{

/// Prints the heading of the rows of a group.
void printHeading(std::string const& group);

/// Prints the comparisons of a figure, one row for each.
void printRows(std::vector<Comparison> const& comparisons);

/// Google Benchmark's JSON with the list `ratios` added: for each comparison the costs, in seconds for one
/// item or in bytes, the ratio, and the target, each with its median and range over the repetitions.
[[nodiscard]] std::string withRatios(std::string const& googleBenchmarkJson,
                                     std::vector<Comparison> const& comparisons);

} // namespace bench
