#pragma once

#include "tools/points/CloudPoint.h"

#include <cstdint>
#include <filesystem>
#include <ostream>

namespace oV::Roamscan::tool
{

/// Writes points as a binary little-endian PLY file with the properties x, y, z (float), intensity (ushort)
/// and time (double). The number of points need not be known in advance, but the stream must be
/// seekable.
class PlyWriter
{
public:
    /// Writes the header. Keeps a reference to the stream.
    explicit PlyWriter(std::ostream& stream);

    void add(CloudPoint const& point);

    /// Writes the number of points into the header. No point may be added afterwards.
    void finish();

    [[nodiscard]] std::uint64_t count() const { return count_; }

private:
    void writeHeader();

    std::ostream& stream_;
    std::uint64_t count_ = 0;
};

} // namespace oV::Roamscan::tool
