#pragma once

#include "tools/points/CloudPoint.h"

#include <cstdint>
#include <filesystem>
#include <ostream>

namespace oV::Roamscan::tool
{

/// Writes points as a binary little-endian PLY file with the properties x, y, z (float), intensity (ushort)
/// and time (double). The count need not be known beforehand; the stream must be able to go back to its
/// start.
class PlyWriter
{
public:
    /// Begins the file. Borrows the stream.
    explicit PlyWriter(std::ostream& stream);

    void add(CloudPoint const& point);

    /// Puts the count into the header. Nothing may be added afterwards.
    void finish();

    [[nodiscard]] std::uint64_t count() const { return count_; }

private:
    void writeHeader();

    std::ostream& stream_;
    std::uint64_t count_ = 0;
};

} // namespace oV::Roamscan::tool
