#include "tools/io/PoseTextFormats.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/LineReader.h"
#include "tools/io/NumberText.h"
#include "tools/io/RecordingFile.h"

#include <roamscan/frame/bvbase/Mat4d.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>
#include <Eigen/LU>

#include <array>
#include <cmath>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double tolerance = 0.1; // of a quaternion's norm and a matrix's determinant

/// Goes on to the next line with something in it.
bool nextDataLine(LineReader& lines, std::string_view& line)
{
    while (lines.next(line)) {
        std::string_view const content = trimmed(line);
        if (!content.empty() && content.front() != '#') {
            return true;
        }
    }
    return false;
}

ToolError errorAt(LineReader const& lines, std::string const& why)
{
    return lineError(lines.name(), lines.number(), why);
}

double numberAt(LineReader const& lines, std::string_view column)
{
    auto const number = parseNumber(column);
    if (!number) {
        throw errorAt(lines, excerpt(column) + " is not a finite number");
    }
    return *number;
}

/// As many numbers between blanks, no more and no fewer.
template <std::size_t Count>
std::array<double, Count> numbersAt(LineReader const& lines, std::string_view line, char const* layout)
{
    std::array<std::string_view, Count> columns;
    std::size_t found = 0;
    for (auto column = nextColumn(line); !column.empty(); column = nextColumn(line), ++found) {
        if (found < Count) {
            columns[found] = column;
        }
    }
    if (found != Count) {
        throw errorAt(lines,
                      std::to_string(found) + " columns, but " + layout + " has " + std::to_string(Count));
    }
    std::array<double, Count> numbers{};
    for (std::size_t i = 0; i < Count; ++i) {
        numbers[i] = numberAt(lines, columns[i]);
    }
    return numbers;
}

double checkedTime(LineReader const& lines, double seconds)
{
    if (std::abs(seconds) > TimeConversion::largestSeconds) {
        throw errorAt(lines, "the time " + fixed(seconds, 0) + " s is beyond what integer time can count");
    }
    return seconds;
}

TrafoT<double> poseAt(LineReader const& lines, Eigen::Vector3d const& position, Eigen::Quaterniond rotation)
{
    double const norm = rotation.norm();
    if (!(std::abs(norm - 1.0) <= tolerance)) {
        throw errorAt(lines,
                      "the quaternion's length is " + fixed(norm, 4) + " instead of 1; is the order right?");
    }
    rotation.coeffs() /= norm;
    return {position, rotation, true};
}

void append(std::vector<TrajectoryNode>& nodes, LineReader const& lines, TrajectoryNode const& node)
{
    if (nodes.size() == largestNodeCount) {
        throw errorAt(lines,
                      "a trajectory stream holds at most " + std::to_string(largestNodeCount) +
                          " poses; cut the input into parts");
    }
    nodes.push_back(node);
}

void requireSome(std::vector<TrajectoryNode> const& nodes, LineReader const& lines)
{
    if (nodes.empty()) {
        throw fileError(lines.name(), "there is no pose in it; check the file and --format");
    }
}

} // namespace

std::vector<TrajectoryNode> readTumPoses(std::istream& text, std::filesystem::path const& name)
{
    LineReader lines(text, name);
    std::vector<TrajectoryNode> nodes;
    std::string_view line;
    while (nextDataLine(lines, line)) {
        auto const [t, x, y, z, qx, qy, qz, qw] =
            numbersAt<8>(lines, line, "a TUM line (t tx ty tz qx qy qz qw)");
        double const time = checkedTime(lines, t);
        append(nodes, lines, {time, poseAt(lines, {x, y, z}, Eigen::Quaterniond(qw, qx, qy, qz))});
    }
    requireSome(nodes, lines);
    return nodes;
}

std::vector<TrajectoryNode> readEurocPoses(std::istream& text, std::filesystem::path const& name)
{
    constexpr std::size_t needed = 8;
    LineReader lines(text, name);
    std::vector<TrajectoryNode> nodes;
    std::string_view line;
    while (nextDataLine(lines, line)) {
        std::array<std::string_view, needed> columns;
        std::size_t found = 0;
        for (bool more = true; more && found < needed; ++found) {
            auto const comma = line.find(',');
            columns[found] = trimmed(line.substr(0, comma));
            more = comma != std::string_view::npos;
            line.remove_prefix(more ? comma + 1 : line.size());
        }
        if (found < needed) {
            throw errorAt(lines,
                          std::to_string(found) +
                              " columns, but an EuRoC line (t,px,py,pz,qw,qx,qy,qz,...) has at least 8");
        }
        auto const nanoseconds = parseInteger(columns[0]);
        if (!nanoseconds) {
            throw errorAt(lines, excerpt(columns[0]) + " is not a time in whole nanoseconds");
        }
        std::array<double, needed> v{};
        for (std::size_t i = 1; i < needed; ++i) {
            v[i] = numberAt(lines, columns[i]);
        }
        append(nodes,
               lines,
               {secondsOfNanoseconds(*nanoseconds),
                poseAt(lines, {v[1], v[2], v[3]}, Eigen::Quaterniond(v[4], v[5], v[6], v[7]))});
    }
    requireSome(nodes, lines);
    return nodes;
}

std::vector<TrajectoryNode> readKittiPoses(std::istream& text,
                                           std::filesystem::path const& name,
                                           std::vector<double> const& times,
                                           std::filesystem::path const& timesName)
{
    LineReader lines(text, name);
    std::vector<TrajectoryNode> nodes;
    std::string_view line;
    while (nextDataLine(lines, line)) {
        auto const m = numbersAt<12>(lines, line, "a KITTI line (a 3x4 matrix, row by row)");
        Eigen::Matrix3d rotation;
        rotation << m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10];
        double const determinant = rotation.determinant();
        if (!(std::abs(determinant - 1.0) <= tolerance)) {
            throw errorAt(lines, "the matrix has the determinant " + fixed(determinant, 4) + " instead of 1");
        }
        if (nodes.size() == times.size()) {
            throw errorAt(
                lines, "there are only " + std::to_string(times.size()) + " times in " + timesName.string());
        }
        Bv_1_1::Mat4d<double> const matrix{
            {m[0], m[4], m[8], 0.0, m[1], m[5], m[9], 0.0, m[2], m[6], m[10], 0.0, m[3], m[7], m[11], 1.0}};
        append(nodes, lines, {times[nodes.size()], TrafoT<double>(matrix, true)});
    }
    requireSome(nodes, lines);
    if (nodes.size() != times.size()) {
        throw fileError(timesName,
                        std::to_string(times.size()) + " times for " + std::to_string(nodes.size()) +
                            " poses in " + name.string());
    }
    return nodes;
}

std::vector<double> readTimes(std::istream& text, std::filesystem::path const& name)
{
    LineReader lines(text, name);
    std::vector<double> times;
    std::string_view line;
    while (nextDataLine(lines, line)) {
        if (times.size() == largestNodeCount) {
            throw errorAt(lines,
                          "a trajectory stream holds at most " + std::to_string(largestNodeCount) + " poses");
        }
        times.push_back(checkedTime(lines, numbersAt<1>(lines, line, "a line of times")[0]));
    }
    return times;
}

} // namespace oV::Roamscan::tool
