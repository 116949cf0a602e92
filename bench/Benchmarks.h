#pragma once

#include "bench/Figure.h"

#include <vector>

namespace bench
{

/// The groups of benchmarks, one source file for each or for two that share their input.

[[nodiscard]] Group trajectoryStreamMemory();
[[nodiscard]] Group sensorStreamMemory();
[[nodiscard]] Group panoramaMemory();
[[nodiscard]] Group cloudPlacingMemory();
[[nodiscard]] Group poseSampling();
[[nodiscard]] Group manyPoses();
[[nodiscard]] Group trajectoryBuilding();
[[nodiscard]] Group trajectoryStream();
[[nodiscard]] Group trajectoryDrawing();
[[nodiscard]] Group scanPoints();
[[nodiscard]] Group manyScanPoints();
[[nodiscard]] Group cloudPlacing();
[[nodiscard]] Group sensorStream();
[[nodiscard]] Group sensorOperations();
[[nodiscard]] Group panorama();
[[nodiscard]] Group anchorSections();
[[nodiscard]] Group exifReader();
[[nodiscard]] Group options();
[[nodiscard]] Group optionsOnTwoThreads();
[[nodiscard]] Group processStart();

/// All of them. Peak memory comes first, while the process is small: a child inherits the heap of its parent,
/// and free memory in it would hide what the child takes.
[[nodiscard]] inline std::vector<Group> allGroups()
{
    return {trajectoryStreamMemory(),
            sensorStreamMemory(),
            panoramaMemory(),
            cloudPlacingMemory(),
            poseSampling(),
            manyPoses(),
            trajectoryBuilding(),
            trajectoryStream(),
            trajectoryDrawing(),
            scanPoints(),
            manyScanPoints(),
            cloudPlacing(),
            sensorStream(),
            sensorOperations(),
            panorama(),
            anchorSections(),
            exifReader(),
            options(),
            optionsOnTwoThreads(),
            processStart()};
}

} // namespace bench
