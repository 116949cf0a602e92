#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

struct SimulateOptions
{
    std::filesystem::path folder; ///< Where the files go; made if need be.
    double seconds = 60.0;        ///< Of a walk through rooms.
    std::uint64_t seed = 1;
    std::filesystem::path along; ///< A recorded trajectory to follow instead; its poses are those of Device0.
    int panoramaColumns = 2400;  ///< With half as many rows; 0 for no panorama.
};

/// Makes up a walk with a scanner through a building: the trajectory (walk.trajectory), what the sensors
/// recorded (walk.sensors), the scan of Device1 in its own frame (scan.ply), the true surfaces
/// (building.json), and a panorama of them in tiles (panorama.png, as panorama/0.png and so on) with its
/// metadata (panorama.json). The same options give the same files.
/// @throws ToolError; nothing is written then
void runSimulate(SimulateOptions const& options, std::ostream& out);

} // namespace oV::Roamscan::tool
