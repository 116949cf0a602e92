/// @file
/// A scan of 10,000,000 points from a PLY file to a placed one, against reading as many bytes and writing as
/// many bytes.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/ScratchFiles.h"
#include "bench/workload/Walk.h"
#include "tools/clouds/CloudFile.h"
#include "tools/placing/CloudPlacing.h"
#include "tools/simulation/CloudPointWriter.h"

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench
{

namespace
{

using namespace oV::Roamscan::tool;
using oV::Roamscan::Trajectory;

constexpr int pointCount = 10'000'000;
constexpr std::size_t poseCount = 100'000;
constexpr std::size_t bytesAtOnce = 1U << 20;

Trajectory makeTrajectory()
{
    return oV::Roamscan::buildTrajectoryFromTrajectoryNodes(makeNodes(poseCount, Spacing::Even));
}

// Points within 12 m of the scanner, evenly distributed over the walk.
void writeScan(std::string const& path)
{
    Trajectory const trajectory = makeTrajectory();
    double const from = trajectory.getStartTime().get();
    double const step = (trajectory.getStopTime().get() - from) / pointCount;
    std::mt19937_64 generator(29);
    std::uniform_real_distribution<float> coordinate(-12.0F, 12.0F);
    std::ofstream stream(path, std::ios::binary);
    CloudPointWriter writer(stream, path);
    for (int i = 0; i < pointCount; ++i) {
        CloudPoint point;
        point.position = {coordinate(generator), coordinate(generator), coordinate(generator)};
        point.intensity = static_cast<std::uint16_t>(i);
        point.time = from + step * i;
        writer.add(point);
    }
    writer.finish();
}

std::string scanFile()
{
    return writtenFile("scan.ply", writeScan);
}

bool placeScan(Trajectory const& trajectory)
{
    std::string const path = scratchFile("placed.ply");
    auto const reader = openCloud(scanFile());
    PointPlacer const placer(
        reader->layout(), TimeOfPoints(reader->layout(), {}, path), trajectory, {}, path);
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    auto const writer = makeCloudWriter(CloudFormat::Ply, stream, path, placer.placedLayout(), {});
    PlacedUses uses;
    uses.writer = writer.get();
    CloudPlacing const placing = placeCloud(*reader, placer, uses);
    writer->finish();
    stream.close();
    if (!stream || placing.counts.placed != pointCount) {
        throw std::runtime_error("the scan could not be placed");
    }
    return true;
}

// Reads the scan's bytes, and writes as many bytes as the placed cloud has.
bool copyBytes(std::uint64_t written)
{
    std::vector<char> buffer(bytesAtOnce);
    std::ifstream in(scanFile(), std::ios::binary);
    while (in.read(buffer.data(), bytesAtOnce)) {
    }
    std::ofstream out(scratchFile("bytes.ply"), std::ios::binary | std::ios::trunc);
    for (std::uint64_t left = written; left > 0; left -= std::min<std::uint64_t>(left, bytesAtOnce)) {
        out.write(buffer.data(), static_cast<std::streamsize>(std::min<std::uint64_t>(left, bytesAtOnce)));
    }
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write as many bytes");
    }
    return true;
}

std::uint64_t placedSize()
{
    std::string const path = scratchFile("placed.ply");
    if (!std::filesystem::exists(path)) {
        placeScan(makeTrajectory());
    }
    return std::filesystem::file_size(path);
}

void placing(benchmark::State& state)
{
    static Trajectory const trajectory = makeTrajectory();
    scanFile();
    timeEach(state, [] { return placeScan(trajectory); });
}

void onlyBytes(benchmark::State& state)
{
    timeEach(state, [size = placedSize()] { return copyBytes(size); });
}

void peakOfPlacing(benchmark::State& state)
{
    scanFile();
    measurePeakMemory(state, makeTrajectory, placeScan);
}

void threeHundredMegabytes(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.counters[peakMemoryCounter] = 300e6;
    }
}

} // namespace

Group cloudPlacing()
{
    return {"A scan of 10,000,000 points placed from PLY to PLY",
            Cost::ReportedTime,
            {{"placing",
              milliseconds,
              {"placeCloud", placing},
              {{"reading and writing the bytes", onlyBytes, timesTheTime, 1.6}}}}};
}

Group cloudPlacingMemory()
{
    return {"Peak memory of placing 10,000,000 points from PLY to PLY",
            Cost::PeakMemory,
            {{"placing",
              megabytes,
              {"placeCloud", peakOfPlacing},
              {{"300 MB", threeHundredMegabytes, timesTheMemory, 1.0}}}}};
}

} // namespace bench
