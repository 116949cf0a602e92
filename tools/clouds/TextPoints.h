#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/LineConverter.h"
#include "tools/clouds/PointReader.h"

#include <cstdint>
#include <memory>

namespace oV::Roamscan::tool
{

/// Where the points of a text are.
struct TextLines
{
    std::uint64_t first = 1; ///< The number of the line at which the input is.
    std::uint64_t count = 0; ///< Points; one for each line with data.
    bool toTheEnd = false;   ///< Whether the points go on to the end of the text.
};

/// Reads points from the lines of a text.
/// @param input at the start of a line
[[nodiscard]] std::unique_ptr<PointReader>
readLines(CloudInput input, PointLayout const& layout, Separator separator, TextLines const& lines);

} // namespace oV::Roamscan::tool
