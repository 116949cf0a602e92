#pragma once

#include "Comparison.h"

#include <vector>

namespace bench
{

/// The comparisons of each group, one source file each. What they need is made when it is first measured.

[[nodiscard]] std::vector<Comparison> streamMemoryBenchmarks();
[[nodiscard]] std::vector<Comparison> sensorMemoryBenchmarks();
[[nodiscard]] std::vector<Comparison> panoramaMemoryBenchmarks();
[[nodiscard]] std::vector<Comparison> poseSamplingBenchmarks();
[[nodiscard]] std::vector<Comparison> trajectoryBuildingBenchmarks();
[[nodiscard]] std::vector<Comparison> trajectoryStreamBenchmarks();
[[nodiscard]] std::vector<Comparison> scanPointBenchmarks();
[[nodiscard]] std::vector<Comparison> sensorStreamBenchmarks();
[[nodiscard]] std::vector<Comparison> sensorOperationsBenchmarks();
[[nodiscard]] std::vector<Comparison> panoramaBenchmarks();
[[nodiscard]] std::vector<Comparison> anchorSectionsBenchmarks();
[[nodiscard]] std::vector<Comparison> exifReaderBenchmarks();

/// All of them. Memory comes first, while the process is small: a child that inherits a used heap would hide
/// in it what it takes.
[[nodiscard]] inline std::vector<Comparison> allBenchmarks()
{
    std::vector<Comparison> all;
    for (auto const group : {streamMemoryBenchmarks,
                             sensorMemoryBenchmarks,
                             panoramaMemoryBenchmarks,
                             poseSamplingBenchmarks,
                             trajectoryBuildingBenchmarks,
                             trajectoryStreamBenchmarks,
                             scanPointBenchmarks,
                             sensorStreamBenchmarks,
                             sensorOperationsBenchmarks,
                             panoramaBenchmarks,
                             anchorSectionsBenchmarks,
                             exifReaderBenchmarks})
    {
        auto comparisons = group();
        all.insert(all.end(), comparisons.begin(), comparisons.end());
    }
    return all;
}

} // namespace bench
