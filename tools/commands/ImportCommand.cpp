#include "tools/commands/ImportCommand.h"

#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/OutputFile.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/TrajectoryFile.h"

#include <ostream>

namespace oV::Roamscan::tool
{

namespace
{

void checkTimesOption(ImportOptions const& options)
{
    bool const isKitti = options.format == PoseFormat::Kitti;
    if (isKitti && options.times.empty()) {
        throw fileError(options.input, "KITTI poses have no times of their own; give them with --times FILE");
    }
    if (!isKitti && !options.times.empty()) {
        throw fileError(options.times, "--times goes with --format kitti only; leave it out");
    }
}

std::vector<TrajectoryNode> readPoses(ImportOptions const& options)
{
    InputFile poses = openInput(options.input);
    switch (options.format) {
    case PoseFormat::Tum:
        return readTumPoses(poses.stream, options.input);
    case PoseFormat::Euroc:
        return readEurocPoses(poses.stream, options.input);
    case PoseFormat::Kitti:
        break;
    }
    InputFile times = openInput(options.times);
    return readKittiPoses(poses.stream, options.input, readTimes(times.stream, options.times), options.times);
}

} // namespace

void runImport(ImportOptions const& options, std::ostream& out)
{
    checkTimesOption(options);
    requireDistinctFiles({options.input, options.times, options.output});

    TrajectoryData data;
    data.nodes = readPoses(options);
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();

    OutputFile output(options.output);
    writeTrajectory(data, output.stream(), options.output);
    output.commit();
    out << data.nodes.size() << " poses imported\n";
}

} // namespace oV::Roamscan::tool
