#pragma once

#include "tools/commands/PlaceCoordinates.h"
#include "tools/console/JsonText.h"
#include "tools/placing/PointPlacer.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <optional>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

/// What `roamscan place` reports.
struct PlaceReport
{
    std::string scan;              ///< The scan's file.
    std::string rangefinder;       ///< Of the scan; empty for a cloud.
    Device from = Device::Device1; ///< The device that made the scan.
    bool fromIsRecognised = false; ///< Whether it was found by the rangefinder's pose.
    PlacingCounts counts;
    PlacingSettings settings;
    PlaceCoordinates coordinates;
    bool gapIsDefault = true;     ///< Whether the user left the longest gap open.
    double usualStep = 0.0;       ///< Of the trajectory, in seconds.
    double trajectoryStart = 0.0; ///< Seconds.
    double trajectoryStop = 0.0;  ///< Seconds.
    std::optional<double> rms;    ///< Metres.
};

/// The last line is the result.
void printText(PlaceReport const& report, std::ostream& out);

[[nodiscard]] Json toJson(PlaceReport const& report);

/// Why no point could be placed, and what to do about it.
[[nodiscard]] std::string whyNothingWasPlaced(PlaceReport const& report);

} // namespace oV::Roamscan::tool
