#pragma once

#include "tools/clouds/PointWriter.h"

#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Writes points as comma-separated text with a header. Each number is the shortest text that reads back to
/// the same value of its type.
class CsvWriter : public PointWriter
{
public:
    /// Writes the header. Keeps a reference to the stream.
    /// @param name the file's name for messages
    CsvWriter(std::ostream& stream, std::filesystem::path name, PointLayout layout);

    [[nodiscard]] std::span<char const> convert(PointBlock const& points,
                                                std::span<double const> times,
                                                std::vector<char>& buffer) const override;
    void write(std::span<char const> converted, std::size_t points) override;
    void finish() override {}

private:
    std::ostream& stream_;
    std::filesystem::path name_;
    PointLayout layout_;
};

} // namespace oV::Roamscan::tool
