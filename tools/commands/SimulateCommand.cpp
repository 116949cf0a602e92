#include "tools/commands/SimulateCommand.h"

#include "tools/console/ToolError.h"
#include "tools/geometry/GroundPlane.h"
#include "tools/io/BuildingFile.h"
#include "tools/io/OutputFile.h"
#include "tools/io/OutputTiles.h"
#include "tools/io/PlyWriter.h"
#include "tools/io/SensorFile.h"
#include "tools/io/TrajectoryFile.h"
#include "tools/simulation/AnchorScan.h"
#include "tools/simulation/BuildingAroundPath.h"
#include "tools/simulation/Instrument.h"
#include "tools/simulation/Panorama.h"
#include "tools/simulation/RandomNumbers.h"
#include "tools/simulation/RecordedMotion.h"
#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/SensorRecording.h"
#include "tools/simulation/SimulationLimits.h"
#include "tools/simulation/WalkMotion.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <numbers>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double nodeStep = 0.01; // seconds
constexpr int mostPanoramaColumns = 8000;

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

Scenario scenarioOf(SimulateOptions const& options)
{
    if (options.panoramaColumns < 0 || options.panoramaColumns > mostPanoramaColumns) {
        throw ToolError("--panorama must be 0 to " + std::to_string(mostPanoramaColumns));
    }
    return options.along.empty() ? walkThroughRooms(options) : walkAlong(options);
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

/// The panorama and its metadata beside it.
class PanoramaOutput
{
public:
    PanoramaOutput(std::filesystem::path const& folder, int columns)
        : tiles_(folder / "panorama.png"),
          metadata_(folder / "panorama.json"),
          size_(columns, (columns + 1) / 2) // once around is twice from straight up to straight down
    {}

    [[nodiscard]] std::filesystem::path const& metadataTarget() const { return metadata_.target(); }

    void write(Scenario const& scenario)
    {
        AnchorScan const scan =
            anchorScan(*scenario.motion, scenario.toPlan, tiles_.target().filename().string());
        tiles_.write(takePanorama(scan.camera, scenario.building, size_));
        nlohmann::json const document = scan.metadata;
        metadata_.stream() << document.dump(1) << '\n';
    }

    void close() { metadata_.close(); }

    void commit()
    {
        tiles_.commit();
        metadata_.commit();
    }

    [[nodiscard]] std::string summary() const
    {
        return std::to_string(size_.width) + " x " + std::to_string(size_.height) + " pixels of the panorama";
    }

private:
    OutputTiles tiles_;
    OutputFile metadata_;
    cv::Size size_;
};

} // namespace

void runSimulate(SimulateOptions const& options, std::ostream& out)
{
    Scenario const scenario = scenarioOf(options);

    OutputFolder const folder(options.folder);
    OutputFile trajectory(options.folder / "walk.trajectory");
    OutputFile sensors(options.folder / "walk.sensors");
    OutputFile points(options.folder / "scan.ply");
    OutputFile building(options.folder / "building.json");
    std::optional<PanoramaOutput> panorama;
    if (options.panoramaColumns > 0) {
        panorama.emplace(options.folder, options.panoramaColumns);
    }
    requireDistinctFiles({options.along,
                          trajectory.target(),
                          sensors.target(),
                          points.target(),
                          building.target(),
                          panorama ? panorama->metadataTarget() : std::filesystem::path()});

    TrajectoryData const data = trajectoryOf(scenario);
    writeTrajectory(data, trajectory.stream(), trajectory.target());
    writeBuilding(scenario.building, building.stream());
    if (panorama) {
        panorama->write(scenario);
    }

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
    if (panorama) {
        panorama->close();
        panorama->commit();
    }
    for (OutputFile* const file : {&trajectory, &sensors, &points, &building}) {
        file->commit();
    }
    out << data.nodes.size() << " poses over "
        << std::lround(scenario.motion->stopTime() - scenario.motion->startTime()) << " s\n"
        << writer.count() << " scan points of " << rangefinders().front().name << '\n'
        << tableCount(recording) << " of " << largestTableCount << " tables in the sensor stream\n"
        << scenario.building.surfaces.size() << " surfaces of the building\n";
    if (panorama) {
        out << panorama->summary() << '\n';
    }
}

} // namespace oV::Roamscan::tool
