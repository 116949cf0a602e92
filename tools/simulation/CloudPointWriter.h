#pragma once

#include "tools/clouds/PlyWriter.h"
#include "tools/points/CloudPoint.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Writes points one by one as a PLY file with the properties x, y, z (float), intensity (ushort) and time
/// (double).
class CloudPointWriter
{
public:
    /// Writes the header. Keeps a reference to the stream, which must be seekable.
    CloudPointWriter(std::ostream& stream, std::filesystem::path const& name);

    /// @throws ToolError if the disk is full
    void add(CloudPoint const& point);

    /// Writes the last points, and their number into the header. No point may be added afterwards.
    void finish();

    [[nodiscard]] std::uint64_t count() const { return writer_.count() + block_.count; }

private:
    void writeBlock();

    PointLayout layout_;
    PlyWriter writer_;
    PointBlock block_; ///< Points that are not written yet.
};

} // namespace oV::Roamscan::tool
