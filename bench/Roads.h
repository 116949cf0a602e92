#pragma once

#include "Comparison.h"

#include <vector>

namespace bench
{

/// The comparisons of each road, one source file each. What they need is made when it is first measured.

[[nodiscard]] std::vector<Comparison> streamMemoryRoad();
[[nodiscard]] std::vector<Comparison> sensorMemoryRoad();
[[nodiscard]] std::vector<Comparison> panoramaMemoryRoad();
[[nodiscard]] std::vector<Comparison> poseSamplingRoad();
[[nodiscard]] std::vector<Comparison> trajectoryBuildingRoad();
[[nodiscard]] std::vector<Comparison> trajectoryStreamRoad();
[[nodiscard]] std::vector<Comparison> scanPointRoad();
[[nodiscard]] std::vector<Comparison> sensorStreamRoad();
[[nodiscard]] std::vector<Comparison> sensorOperationsRoad();
[[nodiscard]] std::vector<Comparison> panoramaRoad();
[[nodiscard]] std::vector<Comparison> anchorSectionsRoad();
[[nodiscard]] std::vector<Comparison> exifReaderRoad();

/// All of them. Memory comes first, while the process is small: a child that inherits a used heap would hide
/// in it what it takes.
[[nodiscard]] inline std::vector<Comparison> allRoads()
{
    std::vector<Comparison> all;
    for (auto const road : {streamMemoryRoad,
                            sensorMemoryRoad,
                            panoramaMemoryRoad,
                            poseSamplingRoad,
                            trajectoryBuildingRoad,
                            trajectoryStreamRoad,
                            scanPointRoad,
                            sensorStreamRoad,
                            sensorOperationsRoad,
                            panoramaRoad,
                            anchorSectionsRoad,
                            exifReaderRoad})
    {
        auto comparisons = road();
        all.insert(all.end(), comparisons.begin(), comparisons.end());
    }
    return all;
}

} // namespace bench
