#include "tools/commands/PlaceCoordinates.h"

#include "tools/commands/PlacePlan.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <Eigen/Geometry>

#include <cstdint>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

Eigen::AlignedBox3d boundsOf(Trajectory const& trajectory)
{
    Eigen::AlignedBox3d bounds;
    for (Vector3d const& place : pathOf(trajectory)) {
        bounds.extend(place);
    }
    return bounds;
}

Vector3d roundCentre(Eigen::AlignedBox3d const& bounds)
{
    constexpr double unit = 100.0; // metres
    return (bounds.center() / unit).array().round() * unit;
}

Vector3d parseOffset(std::string const& text)
{
    auto const columns = commaColumnsOf(text);
    Vector3d origin;
    for (std::size_t i = 0; i < 3; ++i) {
        auto const number = columns.size() == 3 ? parseNumber(columns[i]) : std::nullopt;
        if (!number) {
            throw ToolError("--offset " + plain(text) + ": give X,Y,Z in metres, or auto");
        }
        origin[static_cast<Eigen::Index>(i)] = *number;
    }
    return origin;
}

/// The smallest power of ten, in metres, in which the points near the path fit 32 bits.
double smallestStep(Eigen::AlignedBox3d const& bounds, Vector3d const& origin)
{
    constexpr double reach = 500.0; // metres from the path to the farthest points
    double const farthest =
        (bounds.max() - origin).cwiseAbs().cwiseMax((bounds.min() - origin).cwiseAbs()).maxCoeff() + reach;
    for (double const step : {1e-6, 1e-5, 1e-4}) {
        if (farthest / step < std::numeric_limits<std::int32_t>::max()) {
            return step;
        }
    }
    return 1e-3;
}

} // namespace

PlaceCoordinates chooseCoordinates(std::optional<std::string> const& offset,
                                   std::optional<CloudFormat> format,
                                   Trajectory const& trajectory)
{
    PlaceCoordinates coordinates;
    bool const isLas = format == CloudFormat::Las;
    if (!offset && !isLas) {
        return coordinates;
    }
    bool const isAutomatic = !offset || *offset == "auto";
    Eigen::AlignedBox3d const bounds = boundsOf(trajectory);
    Vector3d const origin = isAutomatic ? roundCentre(bounds) : parseOffset(*offset);
    if (isLas) {
        coordinates.stepOrigin = origin;
        coordinates.step = smallestStep(bounds, origin);
    } else {
        coordinates.floatOrigin = origin;
    }
    return coordinates;
}

} // namespace oV::Roamscan::tool
