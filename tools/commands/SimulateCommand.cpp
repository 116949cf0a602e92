#include "tools/commands/SimulateCommand.h"

#include "tools/console/ToolError.h"
#include "tools/geometry/GroundPlane.h"
#include "tools/io/BuildingFile.h"
#include "tools/io/OutputFile.h"
#include "tools/io/PlyWriter.h"
#include "tools/io/SensorFile.h"
#include "tools/io/TrajectoryFile.h"
#include "tools/simulation/BuildingAroundPath.h"
#include "tools/simulation/Instrument.h"
#include "tools/simulation/RandomNumbers.h"
#include "tools/simulation/RecordedMotion.h"
#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/SensorRecording.h"
#include "tools/simulation/SimulationLimits.h"
#include "tools/simulation/WalkMotion.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <ostream>
#include <system_error>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double nodeStep = 0.01; // seconds

/// A motion, the times at which it was sampled, and what stands around it.
struct Scenario
{
    std::unique_ptr<Motion> motion;
    std::vector<double> nodeTimes;
    Building building;
    Eigen::Matrix3d toPlan; ///< Turns its frame so that z is up.
};

/// 100 times a second; more rarely in a walk of hours, whose nodes would not fit a trajectory stream.
std::vector<double> evenTimes(Motion const& motion)
{
    double const duration = motion.stopTime() - motion.startTime();
    double const step = std::max(nodeStep, duration / static_cast<double>(largestNodeCount - 2));
    std::vector<double> times;
    for (double i = 0.0; i * step < duration; i += 1.0) {
        times.push_back(motion.startTime() + i * step);
    }
    times.push_back(motion.stopTime());
    return times;
}

Scenario walkThroughRooms(SimulateOptions const& options)
{
    if (!(options.seconds > 0.0 && options.seconds <= longestSimulation)) {
        throw ToolError("--seconds must be above 0 and at most 86400");
    }
    double const phase = RandomNumbers(options.seed).between(0.0, 2.0 * std::numbers::pi, 0, 0);
    auto motion = std::make_unique<WalkMotion>(roundWalk(), options.seconds, phase);
    auto times = evenTimes(*motion);
    return {std::move(motion), std::move(times), roomPlan(), Eigen::Matrix3d::Identity()};
}

Scenario walkAlong(SimulateOptions const& options)
{
    auto const recording = readTrajectoryFile(options.along).data;
    auto motion = std::make_unique<RecordedMotion>(recording->nodes, options.along);
    auto times = motion->times();
    auto building = buildingAround(motion->positions(), options.seed);
    Eigen::Matrix3d const toPlan = planRotation(motion->positions());
    return {std::move(motion), std::move(times), std::move(building), toPlan};
}

TrafoT<double> toTrafo(Eigen::Isometry3d const& pose)
{
    return {pose.translation(), Eigen::Quaterniond(pose.linear()), true};
}

TrajectoryData trajectoryOf(Scenario const& scenario)
{
    TrajectoryData data;
    data.nodes.reserve(scenario.nodeTimes.size());
    for (double const time : scenario.nodeTimes) {
        data.nodes.emplace_back(time, toTrafo(scenario.motion->at(time)));
    }
    for (MountedDevice const& mounted : instrument()) {
        data.devicePositions[mounted.device] = toTrafo(mounted.position);
    }
    return data;
}

/// A folder that goes away again if it was made in vain.
class OutputFolder
{
public:
    explicit OutputFolder(std::filesystem::path const& path) : path_(path)
    {
        std::error_code failure;
        made_ = std::filesystem::create_directories(path_, failure);
        if (!std::filesystem::is_directory(path_)) {
            throw fileError(path_,
                            "cannot be made: " +
                                (failure ? failure.message() : std::string("there is a file of this name")));
        }
    }
    OutputFolder(OutputFolder const&) = delete;
    OutputFolder& operator=(OutputFolder const&) = delete;
    ~OutputFolder()
    {
        if (made_) {
            std::error_code ignored;
            std::filesystem::remove(path_, ignored); // only ever removes an empty one
        }
    }

private:
    std::filesystem::path path_;
    bool made_ = false;
};

} // namespace

void runSimulate(SimulateOptions const& options, std::ostream& out)
{
    Scenario const scenario = options.along.empty() ? walkThroughRooms(options) : walkAlong(options);

    OutputFolder const folder(options.folder);
    OutputFile trajectory(options.folder / "walk.trajectory");
    OutputFile sensors(options.folder / "walk.sensors");
    OutputFile points(options.folder / "scan.ply");
    OutputFile building(options.folder / "building.json");
    requireDistinctFiles(
        {options.along, trajectory.target(), sensors.target(), points.target(), building.target()});

    TrajectoryData const data = trajectoryOf(scenario);
    writeTrajectory(data, trajectory.stream(), trajectory.target());
    writeBuilding(scenario.building, building.stream());

    PlyWriter writer(points.stream());
    auto const writePoint = [&](CloudPoint const& point) {
        writer.add(point);
        if (!points.stream()) {
            throw fileError(points.target(), "cannot be written any further; is the disk full?");
        }
    };
    SensorData const recording =
        recordSensors(*scenario.motion, scenario.building, scenario.toPlan, options.seed, writePoint);
    writer.finish();
    writeSensors(recording, sensors.stream(), sensors.target());

    for (OutputFile* const file : {&trajectory, &sensors, &points, &building}) {
        file->close();
    }
    for (OutputFile* const file : {&trajectory, &sensors, &points, &building}) {
        file->commit();
    }
    out << data.nodes.size() << " poses over "
        << std::lround(scenario.motion->stopTime() - scenario.motion->startTime()) << " s\n"
        << writer.count() << " scan points of " << rangefinders().front().name << '\n'
        << tableCount(recording) << " of " << largestTableCount << " tables in the sensor stream\n"
        << scenario.building.surfaces.size() << " surfaces of the building\n";
}

} // namespace oV::Roamscan::tool
