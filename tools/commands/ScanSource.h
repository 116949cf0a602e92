#pragma once

#include "tools/clouds/PointReader.h"

#include <roamscan/sensors/SensorData.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace oV::Roamscan::tool
{

/// The scan that `roamscan place` reads: a cloud, or a rangefinder of a sensor stream.
struct ScanSource
{
    std::filesystem::path name;       ///< Of the file.
    std::shared_ptr<SensorData> data; ///< Keeps the rangefinder's samples; null for a cloud.
    std::unique_ptr<PointReader> points;
    std::string rangefinder; ///< Its name; empty for a cloud.
};

/// Opens a rangefinder of a sensor stream.
/// @param rangefinder its name; by default the first by name
/// @throws ToolError if there is none, or its samples are already rotated by its pose
[[nodiscard]] ScanSource openRangefinder(std::filesystem::path const& sensors,
                                         std::optional<std::string> const& rangefinder);

/// The device that made the scan: the only one whose position equals the pose of the rangefinder.
/// @throws ToolError if there is none or are several, or the stream has no pose of the rangefinder
[[nodiscard]] Device deviceOf(ScanSource const& scan, TrajectoryData const& trajectory);

} // namespace oV::Roamscan::tool
