#pragma once

#include "tools/io/PoseFormat.h"

#include <roamscan/time/TrafoT.h>

#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Writes poses in a text format. Every number is the shortest text that reads back to the same double,
/// except EuRoC's times, which are rounded to nanoseconds.
class PoseTextWriter
{
public:
    /// Keeps a reference to the stream.
    /// @param name the name of the text, for messages
    PoseTextWriter(PoseFormat format, std::ostream& stream, std::filesystem::path name);

    /// Writes a line, and before the first one the header of the format, if it has one. The time, in seconds,
    /// is not part of a KITTI line.
    /// @throws ToolError if EuRoC's nanoseconds cannot represent the time
    void add(double time, TrafoT<double> const& pose);

private:
    void writeHeader();

    PoseFormat format_;
    std::ostream& stream_;
    std::filesystem::path name_;
    bool hasHeader_ = false; ///< Whether the header was written.
};

} // namespace oV::Roamscan::tool
