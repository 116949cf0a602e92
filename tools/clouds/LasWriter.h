#pragma once

#include "tools/clouds/PointWriter.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <limits>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// How a LAS file is written.
struct LasSettings
{
    std::string secondsField;       ///< The field whose value is the time in seconds; may be empty.
    std::array<double, 3> origin{}; ///< Of the integer coordinates, in metres.
    double resolution = 1e-6;       ///< Of the integer coordinates, in metres.
};

/// Writes points as a LAS 1.4 file. Fields with the names and types of the standard dimensions become these;
/// all others become extra bytes of their type. The GPS time is the time of a point in seconds. Colours of 8
/// bits are multiplied by 256, because LAS has colours of 16 bits.
///
/// The point format is 1 or 3 if there is a field scan_angle_rank, as files before LAS 1.4 have it, otherwise
/// 6, 7 or 8. The number of points need not be known in advance, but the stream must be seekable.
class LasWriter : public PointWriter
{
public:
    /// Writes the header. Keeps a reference to the stream.
    /// @param name the file's name for messages
    /// @throws ToolError if there are more extra bytes than a file can have, or x, y or z is missing
    LasWriter(std::ostream& stream, std::filesystem::path name, PointLayout layout, LasSettings settings);

    [[nodiscard]] std::span<char const> convert(PointBlock const& points,
                                                std::span<double const> times,
                                                std::vector<char>& buffer) const override;
    void write(std::span<char const> converted, std::size_t points) override;
    void finish() override;

private:
    /// A field and where it is in a record.
    struct Target
    {
        Field field;
        FieldType type = FieldType::UInt8; ///< In the file.
        std::size_t byte = 0;
        unsigned shift = 0;
        unsigned bits = 0;     ///< 0 for a whole number.
        bool isColour = false; ///< Of 8 bits, to be multiplied.
    };

    void chooseFormat();
    void planRecord();
    void convertPositions(PointBlock const& points, std::vector<char>& buffer) const;
    void convertField(Target const& target, PointBlock const& points, std::vector<char>& buffer) const;
    void writeHeader();
    [[nodiscard]] std::vector<char> header() const;
    [[nodiscard]] std::vector<char> extraBytesRecord() const;

    std::ostream& stream_;
    std::filesystem::path name_;
    PointLayout layout_;
    LasSettings settings_;
    unsigned format_ = 6;
    std::size_t recordSize_ = 0;
    std::size_t timeByte_ = 0;
    unsigned returnBits_ = 4;
    std::array<Field, 3> position_;
    std::vector<Target> targets_; ///< Of the standard dimensions.
    std::vector<Target> extra_;

    std::uint64_t count_ = 0;
    std::array<std::uint64_t, 15> countByReturn_{};
    std::array<std::int32_t, 3> lowest_{};
    std::array<std::int32_t, 3> highest_{};
    double earliest_ = std::numeric_limits<double>::infinity();
    double latest_ = -std::numeric_limits<double>::infinity();
};

} // namespace oV::Roamscan::tool
