#pragma once

#include "tools/clouds/PointWriter.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// What a header in text says.
struct HeaderText
{
    PointLayout fields;                ///< As they are written.
    std::vector<std::string> comments; ///< Lines.
    std::uint64_t count = 0;           ///< Of the points.

    /// Pads a line so that the header keeps its length when the count changes.
    /// @param counts how often the header has the count
    [[nodiscard]] std::string padding(std::size_t counts) const;
};

/// Writes points as little-endian records after a header in text that has their count. The count need not be
/// known in advance, but the stream must be seekable.
class RecordWriter : public PointWriter
{
public:
    [[nodiscard]] std::span<char const> convert(PointBlock const& points,
                                                std::span<double const> times,
                                                std::vector<char>& buffer) const override;
    void write(std::span<char const> converted, std::size_t points) override;
    void finish() override;

    /// The points that were written.
    [[nodiscard]] std::uint64_t count() const { return header_.count; }

protected:
    /// The text of a header, which has the same length for any count.
    using MakeHeader = std::string(HeaderText const&);

    /// Writes the header. Keeps a reference to the stream.
    /// @param name the file's name for messages
    /// @param layout of the points
    /// @param written the same fields with the types of the format
    RecordWriter(std::ostream& stream,
                 std::filesystem::path name,
                 PointLayout layout,
                 PointLayout written,
                 std::vector<std::string> comments,
                 MakeHeader& makeHeader);

private:
    std::ostream& stream_;
    std::filesystem::path name_;
    PointLayout layout_;
    HeaderText header_;
    MakeHeader& makeHeader_;
};

} // namespace oV::Roamscan::tool
