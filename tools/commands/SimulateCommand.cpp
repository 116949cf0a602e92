#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/commands/PositiveNumber.h"
#include "tools/console/PathText.h"
#include "tools/console/ToolError.h"
#include "tools/geometry/Conversions.h"
#include "tools/geometry/GroundPlane.h"
#include "tools/io/BuildingFile.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/OutputTiles.h"
#include "tools/io/RecordingFile.h"
#include "tools/io/Temporary.h"
#include "tools/simulation/AnchorScan.h"
#include "tools/simulation/BuildingAroundPath.h"
#include "tools/simulation/CloudPointWriter.h"
#include "tools/simulation/Instrument.h"
#include "tools/simulation/Panorama.h"
#include "tools/simulation/RandomNumbers.h"
#include "tools/simulation/RecordedMotion.h"
#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/SensorRecording.h"
#include "tools/simulation/WalkMotion.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
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

struct SimulateArguments
{
    std::filesystem::path folder; ///< The output folder, created if needed.
    double seconds = 60.0;        ///< The duration of a walk through rooms.
    std::uint64_t seed = 1;
    std::filesystem::path along; ///< A recorded trajectory of Device0 to follow instead.
    int panoramaColumns = 2400;  ///< Twice the number of rows; 0 for no panorama.
};

/// A motion, the times of its trajectory nodes, and the building around it.
struct Scenario
{
    std::unique_ptr<Motion> motion;
    std::vector<double> nodeTimes;
    Building building;
    Eigen::Matrix3d planFromBuilding; ///< Rotates the building's frame so that z is up.
};

/// 100 times per second; less often in a walk of hours, whose nodes would not fit a trajectory stream.
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

Scenario walkThroughRooms(SimulateArguments const& options)
{
    double const phase = RandomNumbers(options.seed).between(0.0, 2.0 * std::numbers::pi, 0, 0);
    auto motion = std::make_unique<WalkMotion>(roundWalk(), options.seconds, phase);
    auto times = evenTimes(*motion);
    return {std::move(motion), std::move(times), roomPlan(), Eigen::Matrix3d::Identity()};
}

Scenario walkAlong(SimulateArguments const& options)
{
    auto const recording = readTrajectoryFile(options.along).data;
    auto motion = std::make_unique<RecordedMotion>(recording->nodes, options.along);
    std::vector<double> times;
    std::vector<Eigen::Vector3d> path;
    for (TimedPose const& pose : motion->poses()) {
        times.push_back(pose.time);
        path.push_back(pose.position);
    }
    auto building = buildingAround(path, options.seed);
    return {std::move(motion), std::move(times), std::move(building), planRotation(path)};
}

TrajectoryData trajectoryOf(Scenario const& scenario)
{
    TrajectoryData data;
    data.nodes.reserve(scenario.nodeTimes.size());
    for (double const time : scenario.nodeTimes) {
        data.nodes.emplace_back(time, toTrafo(scenario.motion->at(time)));
    }
    for (auto const& [device, bodyFromDevice] : instrument()) {
        data.devicePositions[device] = toTrafo(bodyFromDevice);
    }
    return data;
}

/// Creates a folder if needed. The result removes it again if it was created and nothing is in it.
std::unique_ptr<Temporary> createFolder(std::filesystem::path const& path)
{
    SignalsHeld const held; // a signal removes the folder only if it was created here
    std::error_code failure;
    bool const isNew = std::filesystem::create_directories(path, failure);
    if (!std::filesystem::is_directory(path)) {
        throw fileError(path,
                        "cannot be created: " +
                            (failure ? failure.message() : std::string("there is a file of this name")));
    }
    return isNew ? std::make_unique<Temporary>(path, Temporary::Kind::EmptyFolder) : nullptr;
}

/// A panorama and its metadata.
struct PanoramaOutput
{
    PanoramaOutput(std::filesystem::path const& folder, int columns)
        : tiles(folder / pictureName),
          metadata(folder / metadataName),
          size(columns, (columns + 1) / 2) // 360 degrees are twice the 180 degrees from zenith to nadir
    {}

    void write(Scenario const& scenario)
    {
        AnchorScan const scan = anchorScan(*scenario.motion, scenario.planFromBuilding, pictureName);
        tiles.write(takePanorama(scan.camera, scenario.building, size));
        metadata.stream() << nlohmann::json(scan.metadata).dump(1) << '\n';
    }

    OutputTiles tiles;
    OutputFile metadata;
    cv::Size size;

    static constexpr char const* pictureName = "panorama.png";
    static constexpr char const* metadataName = "panorama.json";
};

/// The panorama of an earlier walk, which does not belong to a walk without one.
class EarlierPanorama
{
public:
    /// @throws ToolError if it cannot be removed without anything else
    explicit EarlierPanorama(std::filesystem::path const& folder)
        : tiles_((folder / PanoramaOutput::pictureName).replace_extension()),
          metadata_(folder / PanoramaOutput::metadataName)
    {
        requireOnlyTiles(tiles_, utf8(std::filesystem::path(PanoramaOutput::pictureName).extension()));
        if (std::filesystem::is_directory(metadata_)) {
            throw fileError(metadata_, "is a folder; move it away");
        }
    }

    void remove() const
    {
        std::error_code failure;
        std::filesystem::remove_all(tiles_, failure);
        if (!failure) {
            std::filesystem::remove(metadata_, failure);
        }
        if (failure) {
            throw fileError(tiles_,
                            "the panorama of an earlier walk cannot be removed: " + failure.message());
        }
    }

private:
    std::filesystem::path tiles_;
    std::filesystem::path metadata_;
};

void run(SimulateArguments const& options, std::ostream& out)
{
    Scenario const scenario = options.along.empty() ? walkThroughRooms(options) : walkAlong(options);

    auto const folder = createFolder(options.folder);
    OutputFile trajectory(options.folder / "walk.trajectory");
    OutputFile sensors(options.folder / "walk.sensors");
    OutputFile points(options.folder / "scan.ply");
    OutputFile building(options.folder / "building.json");
    std::optional<PanoramaOutput> panorama;
    std::optional<EarlierPanorama> earlierPanorama;
    if (options.panoramaColumns > 0) {
        panorama.emplace(options.folder, options.panoramaColumns);
    } else {
        earlierPanorama.emplace(options.folder);
    }
    requireDistinctFiles({options.along,
                          trajectory.target(),
                          sensors.target(),
                          points.target(),
                          building.target(),
                          panorama ? panorama->metadata.target() : std::filesystem::path()});

    TrajectoryData const data = trajectoryOf(scenario);
    writeTrajectory(data, trajectory.stream(), trajectory.target());
    writeBuilding(scenario.building, building.stream());
    if (panorama) {
        panorama->write(scenario);
    }

    CloudPointWriter writer(points.stream(), points.target());
    auto const writePoint = [&](CloudPoint const& point) { writer.add(point); };
    SensorData const recording = recordSensors(
        *scenario.motion, scenario.building, scenario.planFromBuilding, options.seed, writePoint);
    writer.finish();
    writeSensors(recording, sensors.stream(), sensors.target());

    Output::commitAll({panorama ? &panorama->tiles : nullptr,
                       panorama ? &panorama->metadata : nullptr,
                       &trajectory,
                       &sensors,
                       &points,
                       &building});
    if (earlierPanorama) {
        earlierPanorama->remove();
    }
    out << data.nodes.size() << " poses over "
        << std::lround(scenario.motion->stopTime() - scenario.motion->startTime()) << " s\n"
        << writer.count() << " scan points of " << rangefinders().begin()->first << '\n'
        << tableCount(recording) << " of " << largestTableCount << " tables in the sensor stream\n"
        << scenario.building.surfaces.size() << " surfaces of the building\n";
    if (panorama) {
        out << panorama->size.width << " x " << panorama->size.height << " pixels of the panorama\n";
    }
}

} // namespace

void addSimulate(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<SimulateArguments>();
    CLI::App* const command = app.add_subcommand(
        "simulate", "Simulate a walk with a scanner: its trajectory, sensors, true surfaces and a panorama");
    addPath(*command, "OUT_DIR", options->folder, "The folder to write to")->required();
    CLI::Option* const seconds = command->add_option(
        "--seconds",
        options->seconds,
        "The duration of the walk, up to a day (60); in long walks the sensors measure less often");
    seconds->check(positiveNumber(longestSimulation));
    command->add_option("--seed", options->seed, "The same seed gives the same walk and noise (1)")
        ->check(CLI::Validator(
            [](std::string& text) {
                return text.find_first_not_of("0123456789") == std::string::npos
                           ? std::string()
                           : "must be a whole number from 0 up";
            },
            "SEED"));
    addPath(*command, "--along", options->along, "Follow the poses of this trajectory instead")
        ->excludes(seconds);
    command
        ->add_option(
            "--panorama", options->panoramaColumns, "Columns of the panorama, up to 8000 (2400); 0 for none")
        ->check(CLI::Range(0, mostPanoramaColumns));
    command->footer("Example:\n  roamscan simulate walk --along flight.trajectory\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool
