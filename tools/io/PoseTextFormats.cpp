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

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double tolerance = 0.1; // of a quaternion's norm and a matrix's determinant

/// Reads the next line that is neither blank nor a comment.
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

/// The numbers of a line that has exactly `Count` columns.
template <std::size_t Count>
std::array<double, Count> numbersAt(LineReader const& lines, std::string_view line, char const* layout)
{
    auto const columns = columnsOf(line);
    if (columns.size() != Count) {
        throw errorAt(lines,
                      std::to_string(columns.size()) + " columns, but " + layout + " has " +
                          std::to_string(Count));
    }
    std::array<double, Count> numbers{};
    std::ranges::transform(
        columns, numbers.begin(), [&](std::string_view column) { return numberAt(lines, column); });
    return numbers;
}

double checkedTime(LineReader const& lines, double seconds)
{
    if (std::abs(seconds) > TimeConversion::largestSeconds) {
        throw errorAt(lines, "the time " + fixed(seconds, 0) + " s is out of the range of integer time");
    }
    return seconds;
}

TrafoT<double> poseAt(LineReader const& lines, Eigen::Vector3d const& position, Eigen::Quaterniond rotation)
{
    double const norm = rotation.norm();
    if (!(std::abs(norm - 1.0) <= tolerance)) {
        throw errorAt(
            lines, "the norm of the quaternion is " + fixed(norm, 4) + " instead of 1; is the order right?");
    }
    rotation.coeffs() /= norm;
    return {position, rotation, true};
}

/// Reads one value from each line of data, by `parse(lines, line, index)`.
template <typename Value, typename Parse>
std::vector<Value> readLines(std::istream& text, std::filesystem::path const& name, Parse const& parse)
{
    LineReader lines(text, name);
    std::vector<Value> values;
    std::string_view line;
    while (nextDataLine(lines, line)) {
        if (values.size() == largestNodeCount) {
            throw errorAt(lines,
                          "a trajectory stream holds at most " + std::to_string(largestNodeCount) +
                              " poses; cut the input into parts");
        }
        values.push_back(parse(lines, line, values.size()));
    }
    return values;
}

template <typename Parse>
std::vector<TrajectoryNode>
readNodes(std::istream& text, std::filesystem::path const& name, Parse const& parse)
{
    auto nodes = readLines<TrajectoryNode>(text, name, parse);
    if (nodes.empty()) {
        throw fileError(name, "there is no pose in it; check the file and --format");
    }
    return nodes;
}

} // namespace

std::vector<TrajectoryNode> readTumPoses(std::istream& text, std::filesystem::path const& name)
{
    return readNodes(text, name, [](LineReader const& lines, std::string_view line, std::size_t /*index*/) {
        auto const [t, x, y, z, qx, qy, qz, qw] =
            numbersAt<8>(lines, line, "a TUM line (t tx ty tz qx qy qz qw)");
        double const time = checkedTime(lines, t);
        return TrajectoryNode(time, poseAt(lines, {x, y, z}, Eigen::Quaterniond(qw, qx, qy, qz)));
    });
}

std::vector<TrajectoryNode> readEurocPoses(std::istream& text, std::filesystem::path const& name)
{
    return readNodes(text, name, [](LineReader const& lines, std::string_view line, std::size_t /*index*/) {
        constexpr std::size_t needed = 8;
        auto const columns = commaColumnsOf(line);
        if (columns.size() < needed) {
            throw errorAt(lines,
                          std::to_string(columns.size()) +
                              " columns, but an EuRoC line (t,px,py,pz,qw,qx,qy,qz,...) has at least 8");
        }
        auto const nanoseconds = parseInteger(columns[0]);
        if (!nanoseconds) {
            throw errorAt(lines, excerpt(columns[0]) + " is not a time in integer nanoseconds");
        }
        std::array<double, needed> v{};
        for (std::size_t i = 1; i < needed; ++i) {
            v[i] = numberAt(lines, columns[i]);
        }
        return TrajectoryNode(secondsOfNanoseconds(*nanoseconds),
                              poseAt(lines, {v[1], v[2], v[3]}, Eigen::Quaterniond(v[4], v[5], v[6], v[7])));
    });
}

std::vector<TrajectoryNode> readKittiPoses(std::istream& text,
                                           std::filesystem::path const& name,
                                           std::vector<double> const& times,
                                           std::filesystem::path const& timesName)
{
    auto nodes =
        readNodes(text, name, [&](LineReader const& lines, std::string_view line, std::size_t index) {
            auto const m = numbersAt<12>(lines, line, "a KITTI line (a 3x4 matrix, row by row)");
            TrafoT<double>::Transform3D pose = TrafoT<double>::Transform3D::Identity();
            pose.affine() = Eigen::Map<Eigen::Matrix<double, 3, 4, Eigen::RowMajor> const>(m.data());
            double const determinant = pose.linear().determinant();
            if (!(std::abs(determinant - 1.0) <= tolerance)) {
                throw errorAt(lines,
                              "the determinant of the matrix is " + fixed(determinant, 4) + " instead of 1");
            }
            if (index == times.size()) {
                throw errorAt(lines,
                              "there are only " + std::to_string(times.size()) + " times in " +
                                  timesName.string());
            }
            return TrajectoryNode(times[index], TrafoT<double>::FromEigen(pose));
        });
    if (nodes.size() != times.size()) {
        throw fileError(timesName,
                        std::to_string(times.size()) + " times for " + std::to_string(nodes.size()) +
                            " poses in " + name.string());
    }
    return nodes;
}

std::vector<double> readTimes(std::istream& text, std::filesystem::path const& name)
{
    return readLines<double>(
        text, name, [](LineReader const& lines, std::string_view line, std::size_t /*index*/) {
            return checkedTime(lines, numbersAt<1>(lines, line, "a line of times")[0]);
        });
}

} // namespace oV::Roamscan::tool
