#pragma once

#include "report/Measurement.h"

#include <string>
#include <vector>

namespace bench
{

/// The results as a table for people, group by group.
[[nodiscard]] std::string textReport(std::vector<Result> const& results);

} // namespace bench
