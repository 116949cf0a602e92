#pragma once

#include "bench/Measurement.h"

#include <string>
#include <vector>

namespace bench
{

/// The heading of a group's rows.
[[nodiscard]] std::string heading(std::string const& group);

/// A result as rows of a table, one for each baseline.
[[nodiscard]] std::string rows(Result const& result);

/// Google Benchmark's JSON with the list `ratios` added: for each baseline the costs of both sides, the
/// ratios with their median and range, and the target. Costs are in seconds for one item, or in bytes.
[[nodiscard]] std::string withRatios(std::string const& googleBenchmarkJson,
                                     std::vector<Result> const& results);

} // namespace bench
