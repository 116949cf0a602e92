#include "tools/commands/PlaceReport.h"

#include "tools/commands/GapOptions.h"
#include "tools/console/Text.h"
#include "tools/mounts/RangefinderMount.h"

#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

std::string coordinates(Eigen::Vector3d const& place)
{
    return fixed(place.x(), 3) + ", " + fixed(place.y(), 3) + ", " + fixed(place.z(), 3);
}

std::string longestGap(PlaceReport const& report)
{
    return gapText(report.settings.longestGap, report.gapIsDefault);
}

} // namespace

void printText(PlaceReport const& report, std::ostream& out)
{
    PlacingCounts const& counts = report.counts;
    if (report.fromIsRecognised) {
        out << excerpt(report.rangefinder) << " is " << namesOf({report.from}) << " by its pose\n";
    }
    out << counts.points << " points in the scan\n"
        << counts.placed << " points were placed\n"
        << counts.withoutTime << " points had no time\n"
        << counts.outside << " points lay outside the trajectory in time\n"
        << counts.inGaps << " points lay in gaps of the trajectory " << longestGap(report)
        << (report.settings.acrossGaps ? " and were placed across them\n" : " and were left out\n")
        << counts.withoutPosition << " points had no measured position\n";
    if (report.settings.origin && counts.placed > 0) {
        out << "coordinates are floats relative to " << coordinates(*report.settings.origin)
            << ", rounded by at most " << fixed(counts.largestRounding, 7) << " m\n";
    }
    if (report.coordinates.stepOrigin && counts.placed > 0) {
        out << "coordinates are steps of " << fixed(report.coordinates.step, 6) << " m from "
            << coordinates(*report.coordinates.stepOrigin) << '\n';
    }
    out << "placed " << counts.placed << " of " << counts.points << " points";
    if (report.rms) {
        out << ", rms " << fixed(*report.rms, 4) << " m";
    }
    out << '\n';
}

Json toJson(PlaceReport const& report)
{
    PlacingCounts const& counts = report.counts;
    Json json{{"file", report.scan},
              {"from", static_cast<int>(report.from)},
              {"points", counts.points},
              {"placed", counts.placed},
              {"withoutTime", counts.withoutTime},
              {"outside", counts.outside},
              {"inGaps", counts.inGaps},
              {"withoutPosition", counts.withoutPosition},
              {"longestGap", report.settings.longestGap},
              {"acrossGaps", report.settings.acrossGaps},
              {"usualStep", report.usualStep}};
    if (counts.earliest <= counts.latest) {
        json["earliest"] = counts.earliest;
        json["latest"] = counts.latest;
    }
    if (report.settings.origin) {
        Eigen::Vector3d const& origin = *report.settings.origin;
        json["offset"] = {origin.x(), origin.y(), origin.z()};
        json["largestRounding"] = counts.largestRounding;
    }
    if (report.coordinates.stepOrigin) {
        Eigen::Vector3d const& origin = *report.coordinates.stepOrigin;
        json["offset"] = {origin.x(), origin.y(), origin.z()};
        json["step"] = report.coordinates.step;
    }
    if (report.rms) {
        json["rms"] = *report.rms;
    }
    return json;
}

std::string whyNothingWasPlaced(PlaceReport const& report)
{
    PlacingCounts const& counts = report.counts;
    if (counts.points == 0) {
        return "there is no point in it";
    }
    std::vector<std::string> reasons;
    auto const add = [&](std::uint64_t count, std::string const& reason) {
        if (count > 0) {
            reasons.push_back(std::to_string(count) + ' ' + reason);
        }
    };
    add(counts.outside,
        "outside the trajectory in time (points with a time are from " + fixed(counts.earliest, 3) +
            " s to " + fixed(counts.latest, 3) + " s, the trajectory from " +
            fixed(report.trajectoryStart, 3) + " s to " + fixed(report.trajectoryStop, 3) +
            " s: do both use the same clock? --time-offset and --time-scale convert the times of points)");
    add(counts.inGaps,
        "in gaps of the trajectory " + longestGap(report) +
            " (--max-gap sets the longest gap, --across-gaps places them)");
    add(counts.withoutTime, "without a time (NaN)");
    add(counts.withoutPosition, "without a measured position (zero or not finite)");
    return "none of its " + std::to_string(counts.points) + " points could be placed: " + listed(reasons);
}

} // namespace oV::Roamscan::tool
