#pragma once

#include "tools/clouds/RecordWriter.h"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// Writes points as a binary little-endian PLY file. 64-bit integers, which PLY does not have, are written as
/// doubles if no value changes, and refused otherwise.
class PlyWriter : public RecordWriter
{
public:
    /// Writes the header. Keeps a reference to the stream.
    /// @param name the file's name for messages
    /// @param comments lines for the header
    PlyWriter(std::ostream& stream,
              std::filesystem::path name,
              PointLayout const& layout,
              std::vector<std::string> comments = {});
};

} // namespace oV::Roamscan::tool
