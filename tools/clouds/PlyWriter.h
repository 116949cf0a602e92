#pragma once

#include "tools/clouds/PointWriter.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// Writes points as a binary little-endian PLY file. The number of points need not be known in advance, but
/// the stream must be seekable. 64-bit integers, which PLY does not have, are written as doubles if no value
/// changes, and refused otherwise.
class PlyWriter : public PointWriter
{
public:
    /// Writes the header. Keeps a reference to the stream.
    /// @param name the file's name for messages
    /// @param comments lines for the header
    PlyWriter(std::ostream& stream,
              std::filesystem::path name,
              PointLayout layout,
              std::vector<std::string> comments = {});

    [[nodiscard]] std::span<char const> convert(PointBlock const& points,
                                                std::span<double const> times,
                                                std::vector<char>& buffer) const override;
    void write(std::span<char const> converted, std::size_t points) override;
    void finish() override;

    [[nodiscard]] std::uint64_t count() const { return count_; }

private:
    void writeHeader();

    std::ostream& stream_;
    std::filesystem::path name_;
    PointLayout layout_;
    PointLayout written_; ///< The layout with the types of PLY.
    std::vector<std::string> comments_;
    std::uint64_t count_ = 0;
};

} // namespace oV::Roamscan::tool
