#include "tools/io/PoseTextWriter.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <ostream>
#include <span>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

void append(std::string& line, std::span<double const> numbers, char separator)
{
    for (double const number : numbers) {
        if (!line.empty()) {
            line += separator;
        }
        line += shortestText(number);
    }
}

std::string eurocTime(double time, std::filesystem::path const& name)
{
    auto text = nanosecondsText(time);
    if (!text) {
        throw fileError(name,
                        "the time " + fixed(time, 0) +
                            " s is too large for the nanoseconds of EuRoC; choose another format");
    }
    return *text;
}

} // namespace

PoseTextWriter::PoseTextWriter(PoseFormat format, std::ostream& stream, std::filesystem::path name)
    : format_(format), stream_(stream), name_(std::move(name))
{}

void PoseTextWriter::writeHeader()
{
    hasHeader_ = true;
    switch (format_) {
    case PoseFormat::Tum:
        stream_ << "# time tx ty tz qx qy qz qw\n";
        break;
    case PoseFormat::Euroc:
        stream_ << "#timestamp [ns],p_x [m],p_y [m],p_z [m],q_w,q_x,q_y,q_z\n";
        break;
    case PoseFormat::Csv:
        stream_ << csvPoseHeader << '\n';
        break;
    case PoseFormat::Kitti:
        break;
    }
}

void PoseTextWriter::add(double time, TrafoT<double> const& pose)
{
    auto const numbers = pose.serialize(); // x, y, z, qw, qx, qy, qz
    std::span const position(numbers.data(), 3);
    std::span const imaginary(numbers.data() + 4, 3);
    std::string line;
    switch (format_) {
    case PoseFormat::Tum:
        line = shortestText(time);
        append(line, position, ' ');
        append(line, imaginary, ' ');
        append(line, {&numbers[3], 1}, ' ');
        break;
    case PoseFormat::Euroc:
        line = eurocTime(time, name_);
        append(line, numbers, ',');
        break;
    case PoseFormat::Csv:
        line = shortestText(time);
        append(line, numbers, ',');
        break;
    case PoseFormat::Kitti: {
        Eigen::Matrix<double, 3, 4, Eigen::RowMajor> const matrix = pose.ToEigen().matrix().topRows<3>();
        append(line, {matrix.data(), 12}, ' ');
        break;
    }
    }
    if (!hasHeader_) {
        writeHeader();
    }
    stream_ << line << '\n';
}

} // namespace oV::Roamscan::tool
