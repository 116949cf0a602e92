#pragma once

#include "tools/points/PointBlock.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace oV::Roamscan::tool
{

/// How the time of a point follows from its record: `scale * value + offset` seconds.
struct TimeSettings
{
    std::optional<std::string> property; ///< The field's name; by default one of the usual names.
    double scale = 1.0;                  ///< Seconds per unit of the value.
    double offset = 0.0;                 ///< Seconds.
};

/// The field with the time of a point.
class TimeOfPoints
{
public:
    /// @param name the scan's name for messages
    /// @throws ToolError if no field has the name, or one of the usual ones: time, t, timestamp, gps_time,
    /// scalar_time, scalar_timestamp, scalar_gps_time, in any case and with or without underscores
    TimeOfPoints(PointLayout const& layout, TimeSettings settings, std::filesystem::path const& name);

    /// Reads the times of points in seconds. Decimal scales such as 1e-9 divide, which rounds once.
    /// @param stride bytes of a record
    void read(PointBlock const& points, std::size_t stride, std::span<double> seconds) const;

    /// The smallest difference between two times near `seconds` that the field can hold, in seconds.
    [[nodiscard]] double resolutionAt(double seconds) const;

    /// Whether the value of the field is the time in seconds, as a double.
    [[nodiscard]] bool isInSeconds() const
    {
        return field_.type == FieldType::Double && settings_.scale == 1.0 && settings_.offset == 0.0;
    }

    [[nodiscard]] Field const& field() const { return field_; }

private:
    TimeSettings settings_;
    double unitsPerSecond_ = 0.0; ///< If it is a whole number; otherwise 0.
    Field field_;
};

} // namespace oV::Roamscan::tool
