#pragma once

#include "report/Measurement.h"

#include <string>
#include <vector>

namespace bench
{

/// The results with every single measurement, for programs: an object with `context` and `figures`. Costs are
/// in seconds for one item (of a stream: one byte), or in bytes for memory.
[[nodiscard]] std::string jsonReport(std::vector<Result> const& results);

} // namespace bench
