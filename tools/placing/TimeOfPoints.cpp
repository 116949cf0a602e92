#include "tools/placing/TimeOfPoints.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <array>
#include <cmath>
#include <concepts>
#include <limits>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::array usualNames{
    "gps_time", "scalar_gps_time", "time", "t", "timestamp", "scalar_time", "scalar_timestamp"};

Field timeField(PointLayout const& layout, TimeSettings const& settings, std::filesystem::path const& name)
{
    if (settings.property) {
        Field const* const field = layout.find(*settings.property);
        if (field == nullptr) {
            throw fileError(name,
                            "its points have no property " + excerpt(*settings.property) +
                                "; they have: " + listFields(layout));
        }
        return *field;
    }
    for (char const* const usual : usualNames) {
        if (Field const* const field = layout.find(usual)) {
            return *field;
        }
    }
    throw fileError(name,
                    "its points have no time, and a point is placed by its time; if a property with another "
                    "name is the time, give it with --time-property NAME; the properties are: " +
                        listFields(layout));
}

/// 1 / scale, if it is a whole number up to rounding; otherwise 0.
double wholeUnitsPerSecond(double scale)
{
    double const units = std::round(1.0 / scale);
    bool const isWhole = units > 1.0 && units <= 1e15 && std::abs(units * scale - 1.0) < 1e-14;
    return isWhole ? units : 0.0;
}

/// Seconds of a value that is divided by a whole number of units. Of integers, the whole seconds are split
/// off first, so that 64 bits of nanoseconds keep their precision.
template <typename Number>
double divided(Number value, double unitsPerSecond, double offset)
{
    if constexpr (std::integral<Number> && sizeof(Number) == 8) {
        auto const units = static_cast<Number>(unitsPerSecond);
        Number const wholeSeconds = value / units;
        return (static_cast<double>(wholeSeconds) + offset) +
               static_cast<double>(value % units) / unitsPerSecond;
    } else {
        return static_cast<double>(value) / unitsPerSecond + offset;
    }
}

} // namespace

TimeOfPoints::TimeOfPoints(PointLayout const& layout,
                           TimeSettings settings,
                           std::filesystem::path const& name)
    : settings_(std::move(settings)),
      unitsPerSecond_(wholeUnitsPerSecond(settings_.scale)),
      field_(timeField(layout, settings_, name))
{}

void TimeOfPoints::read(PointBlock const& points, std::size_t stride, std::span<double> seconds) const
{
    if (points.count == 0) {
        return;
    }
    if (unitsPerSecond_ == 0.0) {
        points.read(field_, stride, seconds.data());
        if (settings_.scale != 1.0 || settings_.offset != 0.0) {
            for (double& time : seconds) {
                time = settings_.scale * time + settings_.offset;
            }
        }
        return;
    }
    withType(field_.type, [&](auto zero) {
        char const* from = points.records.data() + field_.offset;
        for (double& time : seconds) {
            time = divided(load<decltype(zero)>(from), unitsPerSecond_, settings_.offset);
            from += stride;
        }
    });
}

double TimeOfPoints::resolutionAt(double seconds) const
{
    double const value = std::abs((seconds - settings_.offset) / settings_.scale);
    double spacing = 1.0;
    if (field_.type == FieldType::Float) {
        auto const nearest = static_cast<float>(value);
        spacing =
            static_cast<double>(std::nextafter(nearest, std::numeric_limits<float>::infinity()) - nearest);
    } else if (field_.type == FieldType::Double) {
        spacing = std::nextafter(value, std::numeric_limits<double>::infinity()) - value;
    }
    return spacing * std::abs(settings_.scale);
}

} // namespace oV::Roamscan::tool
