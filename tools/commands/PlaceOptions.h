#pragma once

#include "tools/clouds/CloudFile.h"
#include "tools/commands/GapOptions.h"
#include "tools/placing/TimeOfPoints.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <filesystem>
#include <optional>
#include <string>

namespace CLI
{
class App;
}

namespace oV::Roamscan::tool
{

/// The options of `roamscan place`.
struct PlaceOptions
{
    std::filesystem::path trajectory;
    std::optional<int> from; ///< The device that made the scan; by default that of the rangefinder's pose.
    Device to = Device::Device0; ///< The device in whose world frame the points are placed.

    std::filesystem::path points;           ///< The scan as a cloud; empty if `sensors` is given.
    std::filesystem::path sensors;          ///< The scan as a sensor stream; empty if `points` is given.
    std::optional<std::string> rangefinder; ///< Of the sensor stream; by default the first by name.
    TimeSettings time;                      ///< Of the cloud.
    TextSettings text;                      ///< Of the cloud, if it is a text.
    GapOptions gaps;

    std::filesystem::path cloud;            ///< The outputs and the building may be empty.
    std::optional<CloudFormat> cloudFormat; ///< By default that of the cloud's name.
    std::optional<std::string> offset;      ///< "X,Y,Z" or "auto".
    std::filesystem::path picture;
    std::filesystem::path building; ///< The true surfaces to measure the placed points against.
    bool json = false;

    /// The format of the cloud that is written; nothing if none is.
    /// @throws ToolError if neither the option nor the ending of the name says it
    [[nodiscard]] std::optional<CloudFormat> formatOfCloud() const;

    /// @throws ToolError if the format of the cloud is open, two of the files are the same, or two inputs or
    /// outputs are the same pipe
    void check() const;
};

void addPlaceOptions(CLI::App& command, PlaceOptions& options);

} // namespace oV::Roamscan::tool
