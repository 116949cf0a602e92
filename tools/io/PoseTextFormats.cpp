#include "tools/io/PoseTextFormats.h"

#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/LineReader.h"
#include "tools/io/NumberText.h"
#include "tools/io/RecordingFile.h"
#include "tools/io/UnitQuaternion.h"

#include <roamscan/frame/bvbase/Mat4d.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>
#include <Eigen/LU>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double matrixTolerance = 0.01; // of the dot products of rows
constexpr std::size_t mostTimes = 100'000'000;

/// Reads the next line that is neither blank nor a comment, nor the header of a CSV text.
bool nextDataLine(LineReader& lines, std::string_view& line)
{
    while (lines.next(line)) {
        std::string_view const content = trimmed(line);
        if (!content.empty() && content.front() != '#' && content != csvPoseHeader) {
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

TrafoT<double>
poseAt(LineReader const& lines, Eigen::Vector3d const& position, Eigen::Quaterniond const& rotation)
{
    auto const unit = unitQuaternion(rotation);
    if (!unit) {
        throw errorAt(lines,
                      "the norm of the quaternion is " + fixed(rotation.norm(), 4) +
                          " instead of 1; is the order right?");
    }
    return {position, *unit, true};
}

/// Reads one value from each line of data, by `parse(lines, line, index)`, and its line number.
template <typename Value, typename Parse>
void readLines(std::istream& text,
               std::filesystem::path const& name,
               std::size_t mostValues,
               std::vector<Value>& values,
               std::vector<std::uint64_t>& numbers,
               Parse const& parse)
{
    LineReader lines(text, name);
    std::string_view line;
    while (nextDataLine(lines, line)) {
        if (values.size() == mostValues) {
            throw errorAt(lines,
                          "there are more than " + std::to_string(mostValues) +
                              " lines; cut the input into parts");
        }
        values.push_back(parse(lines, line, values.size()));
        numbers.push_back(lines.number());
    }
}

template <typename Parse>
TextPoses readNodes(std::istream& text, std::filesystem::path const& name, Parse const& parse)
{
    TextPoses poses;
    readLines(text, name, largestNodeCount, poses.nodes, poses.lines, parse);
    if (poses.nodes.empty()) {
        throw fileError(name, "there is no pose in it; check the file and --format");
    }
    return poses;
}

TrajectoryNode tumNode(LineReader const& lines, std::string_view line)
{
    auto const [t, x, y, z, qx, qy, qz, qw] =
        numbersAt<8>(lines, line, "a TUM line (t tx ty tz qx qy qz qw)");
    double const time = checkedTime(lines, t);
    return TrajectoryNode(time, poseAt(lines, {x, y, z}, Eigen::Quaterniond(qw, qx, qy, qz)));
}

/// A line of columns separated by commas: the time, position and quaternion, its real part first.
TrajectoryNode nodeAt(LineReader const& lines, double time, std::vector<std::string_view> const& columns)
{
    std::array<double, 7> v{};
    std::transform(columns.begin() + 1, columns.begin() + 8, v.begin(), [&](std::string_view column) {
        return numberAt(lines, column);
    });
    return TrajectoryNode(time,
                          poseAt(lines, {v[0], v[1], v[2]}, Eigen::Quaterniond(v[3], v[4], v[5], v[6])));
}

TrajectoryNode eurocNode(LineReader const& lines, std::string_view line)
{
    auto const columns = commaColumnsOf(line);
    if (columns.size() < 8) {
        throw errorAt(lines,
                      std::to_string(columns.size()) +
                          " columns, but an EuRoC line (t,px,py,pz,qw,qx,qy,qz,...) has at least 8");
    }
    auto const nanoseconds = parseInteger(columns[0]);
    if (!nanoseconds) {
        throw errorAt(lines, excerpt(columns[0]) + " is not a time in integer nanoseconds");
    }
    return nodeAt(lines, secondsOfNanoseconds(*nanoseconds), columns);
}

TrajectoryNode csvNode(LineReader const& lines, std::string_view line)
{
    auto const columns = commaColumnsOf(line);
    if (columns.size() != 8) {
        throw errorAt(
            lines, std::to_string(columns.size()) + " columns, but a CSV line (" + csvPoseHeader + ") has 8");
    }
    return nodeAt(lines, checkedTime(lines, numberAt(lines, columns[0])), columns);
}

using LineParser = TrajectoryNode(LineReader const& lines, std::string_view line);

/// Of a format that has the times in it.
LineParser* parserOf(PoseFormat format)
{
    if (format == PoseFormat::Euroc) {
        return eurocNode;
    }
    return format == PoseFormat::Csv ? csvNode : tumNode;
}

/// @throws ToolError unless the rows of the matrix are of unit length and at right angles, and right-handed
void checkRotation(LineReader const& lines, Eigen::Matrix3d const& matrix)
{
    Eigen::Matrix3d const error = matrix * matrix.transpose() - Eigen::Matrix3d::Identity();
    double const largest = error.cwiseAbs().maxCoeff();
    if (!error.allFinite() || largest > matrixTolerance) {
        throw errorAt(
            lines,
            "the matrix is no rotation: its rows are not of unit length and at right angles (off by " +
                fixed(largest, 4) + "); is the order of the numbers right?");
    }
    if (matrix.determinant() < 0.0) {
        throw errorAt(lines, "the matrix is no rotation but a reflection: its determinant is -1");
    }
}

TrafoT<double> kittiPose(LineReader const& lines, std::string_view line)
{
    auto const m = numbersAt<12>(lines, line, "a KITTI line (a 3x4 matrix, row by row)");
    TrafoT<double>::Transform3D pose = TrafoT<double>::Transform3D::Identity();
    pose.affine() = Eigen::Map<Eigen::Matrix<double, 3, 4, Eigen::RowMajor> const>(m.data());
    checkRotation(lines, pose.linear());
    return TrafoT<double>::FromEigen(pose);
}

} // namespace

TextPoses readPoses(PoseFormat format, std::istream& text, std::filesystem::path const& name)
{
    auto* const parse = parserOf(format);
    return readNodes(text, name, [&](LineReader const& lines, std::string_view line, std::size_t /*index*/) {
        return parse(lines, line);
    });
}

TextPoses readKittiPoses(std::istream& text,
                         std::filesystem::path const& name,
                         std::vector<double> const& times,
                         std::filesystem::path const& timesName)
{
    auto poses =
        readNodes(text, name, [&](LineReader const& lines, std::string_view line, std::size_t index) {
            TrafoT<double> const pose = kittiPose(lines, line);
            if (index == times.size()) {
                throw errorAt(
                    lines, "there are only " + std::to_string(times.size()) + " times in " + utf8(timesName));
            }
            return TrajectoryNode(times[index], pose);
        });
    if (poses.nodes.size() != times.size()) {
        throw fileError(timesName,
                        std::to_string(times.size()) + " times for " + std::to_string(poses.nodes.size()) +
                            " poses in " + utf8(name));
    }
    return poses;
}

TextTimes readTimes(std::istream& text, std::filesystem::path const& name)
{
    TextTimes read;
    readLines(text,
              name,
              mostTimes,
              read.times,
              read.lines,
              [](LineReader const& lines, std::string_view line, std::size_t /*index*/) {
                  return checkedTime(lines, numbersAt<1>(lines, line, "a line of times")[0]);
              });
    return read;
}

} // namespace oV::Roamscan::tool
