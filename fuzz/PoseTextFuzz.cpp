/// @file
/// Reads any bytes as poses in text, as times, or as the position of a device. The first byte selects the
/// format. What is read is written and read back with the same numbers.

#include "StreamInput.h"
#include "tools/console/ToolError.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/PoseTextWriter.h"
#include "tools/mounts/MountText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using fuzz::require;
using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

bool sameBits(TrafoT<double> const& a, TrafoT<double> const& b)
{
    auto const bits = [](TrafoT<double> const& pose) {
        return std::bit_cast<std::array<std::uint64_t, 7>>(pose.serialize());
    };
    return bits(a) == bits(b);
}

std::vector<TrajectoryNode> read(PoseFormat format, std::string const& bytes)
{
    std::istringstream text(bytes);
    auto const poses = readPoses(format, text, "poses");
    require(poses.lines.size() == poses.nodes.size(), "every pose has a line");
    require(std::ranges::is_sorted(poses.lines), "the lines ascend");
    return poses.nodes;
}

std::string write(PoseFormat format, std::vector<TrajectoryNode> const& nodes)
{
    std::ostringstream text;
    PoseTextWriter writer(format, text, "poses");
    for (TrajectoryNode const& node : nodes) {
        writer.add(node.time, node.pose);
    }
    return text.str();
}

void poses(PoseFormat format, std::string const& bytes)
{
    auto const nodes = read(format, bytes);
    auto const again = read(format, write(format, nodes));
    require(again.size() == nodes.size(), "every pose is read back");
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        require(std::isfinite(nodes[i].time), "a time is finite");
        require(sameBits(again[i].pose, nodes[i].pose), "a pose is read back");
        require(again[i].time == nodes[i].time, "a time is read back");
    }
}

/// There is a time for each line.
void kittiPoses(std::string const& bytes)
{
    std::vector<double> times(static_cast<std::size_t>(std::ranges::count(bytes, '\n')));
    std::istringstream text(bytes);
    auto const nodes = readKittiPoses(text, "poses", times, "times").nodes;
    require(nodes.size() == times.size(), "every pose has a time");
    for (TrajectoryNode const& node : nodes) {
        require(std::abs(node.pose.rotation().norm() - 1.0) < 1e-9, "a rotation has unit length");
    }
    std::istringstream written(write(PoseFormat::Kitti, nodes));
    require(readKittiPoses(written, "poses", times, "times").nodes.size() == nodes.size(),
            "what was written is read back");
}

void times(std::string const& bytes)
{
    std::istringstream text(bytes);
    auto const read = readTimes(text, "times");
    require(read.times.size() == read.lines.size(), "every time has a line");
    require(std::ranges::all_of(read.times, [](double time) { return std::isfinite(time); }),
            "a time is finite");
}

void mount(std::string const& text)
{
    Mount const mount = parseMount(text, "--set");
    Mount const again = parseMount(mountText(mount), "--set");
    require(again.device == mount.device && sameBits(again.position, mount.position),
            "what was written is read back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    std::string const bytes(data + 1, data + size);
    try {
        switch (data[0] % 6) {
        case 0:
            poses(PoseFormat::Tum, bytes);
            break;
        case 1:
            poses(PoseFormat::Euroc, bytes);
            break;
        case 2:
            poses(PoseFormat::Csv, bytes);
            break;
        case 3:
            kittiPoses(bytes);
            break;
        case 4:
            times(bytes);
            break;
        default:
            mount(bytes);
            break;
        }
    } catch (ToolError const&) { // refused with a reason
    }
    return 0;
}
