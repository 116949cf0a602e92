#pragma once

#include "tools/clouds/PointWriter.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// Writes points as a binary PCD file of version 0.7. The number of points need not be known in advance, but
/// the stream must be seekable.
class PcdWriter : public PointWriter
{
public:
    /// Writes the header. Keeps a reference to the stream.
    /// @param name the file's name for messages
    /// @param comments lines for the header
    PcdWriter(std::ostream& stream,
              std::filesystem::path name,
              PointLayout layout,
              std::vector<std::string> comments = {});

    [[nodiscard]] std::span<char const> convert(PointBlock const& points,
                                                std::span<double const> times,
                                                std::vector<char>& buffer) const override;
    void write(std::span<char const> converted, std::size_t points) override;
    void finish() override;

private:
    void writeHeader();

    std::ostream& stream_;
    std::filesystem::path name_;
    PointLayout layout_;
    std::vector<std::string> comments_;
    std::uint64_t count_ = 0;
};

} // namespace oV::Roamscan::tool
