#include "tools/placing/PointPlacer.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <roamscan/time/EigenConversion.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

using Bv_1_1::Vec3d;
using Eigen::Vector3d;

constexpr std::array directionNames{std::array{"nx", "ny", "nz"},
                                    std::array{"normal_x", "normal_y", "normal_z"},
                                    std::array{"x_t", "y_t", "z_t"}};

std::array<Field, 3> positionOf(PointLayout const& layout, std::filesystem::path const& name)
{
    auto const position = layout.findVector("x", "y", "z");
    if (!position) {
        throw fileError(name, "its points lack x, y or z; the properties are: " + listFields(layout));
    }
    return *position;
}

/// The layout of a scan with other types of x, y and z.
PointLayout
layoutOfPlaced(PointLayout const& scan, std::array<Field, 3> const& position, FieldType coordinate)
{
    PointLayout placed;
    for (Field const& field : scan.fields()) {
        auto const* const found = std::ranges::find(position, field.offset, &Field::offset);
        if (found == position.end()) {
            placed.add(field.name, field.type);
        } else {
            placed.add(std::string(1, "xyz"[found - position.begin()]), coordinate);
        }
    }
    return placed;
}

bool contains(std::array<Field, 3> const& fields, Field const& field)
{
    return std::ranges::find(fields, field.offset, &Field::offset) != fields.end();
}

void storeFloating(Field const& field, char* record, double value)
{
    if (field.type == FieldType::Double) {
        store(record + field.offset, value);
    } else {
        store(record + field.offset, static_cast<float>(value));
    }
}

} // namespace

PlacingCounts& PlacingCounts::operator+=(PlacingCounts const& other)
{
    points += other.points;
    placed += other.placed;
    withoutTime += other.withoutTime;
    outside += other.outside;
    inGaps += other.inGaps;
    withoutPosition += other.withoutPosition;
    earliest = std::min(earliest, other.earliest);
    latest = std::max(latest, other.latest);
    largestRounding = std::max(largestRounding, other.largestRounding);
    return *this;
}

PointPlacer::PointPlacer(PointLayout scan,
                         TimeOfPoints time,
                         Trajectory const& trajectory,
                         PlacingSettings settings,
                         std::filesystem::path const& name)
    : scan_(std::move(scan)),
      time_(std::move(time)),
      trajectory_(trajectory),
      settings_(std::move(settings)),
      position_(positionOf(scan_, name))
{
    placed_ = layoutOfPlaced(scan_, position_, settings_.origin ? FieldType::Float : FieldType::Double);
    placedPosition_ = positionOf(placed_, name);
    findDirections(name);
    planCopies();
}

void PointPlacer::findDirections(std::filesystem::path const& name)
{
    for (auto const& [x, y, z] : directionNames) {
        auto const found = scan_.findVector(x, y, z);
        if (!found) {
            continue;
        }
        if (!std::ranges::all_of(*found, isFloating, &Field::type)) {
            throw fileError(
                name,
                std::string("the directions ") + x + ", " + y + " and " + z +
                    " are integers, which cannot be rotated; store them as floats, or leave them out");
        }
        directions_.push_back(*placed_.findVector(x, y, z));
    }
}

/// Neighbouring fields that are copied unchanged make one run.
void PointPlacer::planCopies()
{
    for (std::size_t i = 0; i < scan_.fields().size(); ++i) {
        Field const& from = scan_.fields()[i];
        Field const& to = placed_.fields()[i];
        if (contains(position_, from)) {
            continue;
        }
        bool const continues = !runs_.empty() && runs_.back().from + runs_.back().size == from.offset;
        if (continues) {
            runs_.back().size += sizeOf(from.type);
        } else {
            runs_.push_back({from.offset, to.offset, sizeOf(from.type)});
        }
    }
}

void PointPlacer::place(PointBlock const& scan, PlacedBlock& placed) const
{
    placed.times.resize(scan.count);
    time_.read(scan, scan_.stride(), placed.times);
    placed.counts = {};
    findPlaces(scan, placed);
    copyRecords(scan, placed);
    storePositions(placed);
    if (!directions_.empty()) {
        rotateDirections(placed);
    }
}

void PointPlacer::findPlaces(PointBlock const& scan, PlacedBlock& placed) const
{
    placed.places.resize(scan.count);
    placed.placements.resize(scan.count);
    auto const transform = [&](double longestGap) {
        readMeasured(scan, placed.places);
        placePoints(trajectory_,
                    placed.times,
                    std::span<Vec3d<double> const>(placed.places),
                    placed.places,
                    placed.placements,
                    {longestGap, false});
    };
    transform(settings_.longestGap);
    count(placed);
    if (settings_.acrossGaps && placed.counts.inGaps > 0) {
        auto const inGaps = placed.counts.inGaps;
        transform(std::numeric_limits<double>::infinity());
        placed.counts = {};
        count(placed);
        placed.counts.inGaps = inGaps;
    }
}

/// A position of zero is no measurement. It becomes NaN, which is not placed.
void PointPlacer::readMeasured(PointBlock const& scan, std::span<Vec3d<double>> positions) const
{
    if (positions.empty()) {
        return;
    }
    std::size_t const step = sizeof(Vec3d<double>) / sizeof(double);
    scan.read(position_[0], scan_.stride(), &positions[0].x, step);
    scan.read(position_[1], scan_.stride(), &positions[0].y, step);
    scan.read(position_[2], scan_.stride(), &positions[0].z, step);
    for (Vec3d<double>& position : positions) {
        if (position.x == 0.0 && position.y == 0.0 && position.z == 0.0) {
            position.x = std::numeric_limits<double>::quiet_NaN();
        }
    }
}

void PointPlacer::count(PlacedBlock& placed)
{
    PlacingCounts& counts = placed.counts;
    counts.points = placed.times.size();
    for (std::size_t i = 0; i < placed.times.size(); ++i) {
        double const time = placed.times[i];
        if (std::isnan(time)) {
            ++counts.withoutTime;
            continue;
        }
        counts.earliest = std::min(counts.earliest, time);
        counts.latest = std::max(counts.latest, time);
        switch (placed.placements[i]) {
        case PointPlacement::Placed:
            ++counts.placed;
            break;
        case PointPlacement::Outside:
            ++counts.outside;
            break;
        case PointPlacement::InGap:
            ++counts.inGaps;
            break;
        case PointPlacement::NotFinite:
            ++counts.withoutPosition;
            break;
        }
    }
}

/// Copies the records of placed points without their positions, and moves their places and times together.
void PointPlacer::copyRecords(PointBlock const& scan, PlacedBlock& placed) const
{
    placed.points.resize(placed.counts.placed, placed_);
    char const* from = scan.records.data();
    char* to = placed.points.records.data();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < scan.count; ++i, from += scan_.stride()) {
        if (placed.placements[i] != PointPlacement::Placed) {
            continue;
        }
        for (Run const& run : runs_) {
            std::memcpy(to + run.to, from + run.from, run.size);
        }
        placed.places[kept] = placed.places[i];
        placed.times[kept] = placed.times[i];
        ++kept;
        to += placed_.stride();
    }
    placed.places.resize(kept);
    placed.times.resize(kept);
}

void PointPlacer::storePositions(PlacedBlock& placed) const
{
    auto const& [x, y, z] = placedPosition_;
    char* record = placed.points.records.data();
    if (!settings_.origin) {
        for (Vec3d<double> const& place : placed.places) {
            store(record + x.offset, place.x);
            store(record + y.offset, place.y);
            store(record + z.offset, place.z);
            record += placed_.stride();
        }
        return;
    }
    double rounding = 0.0;
    for (Vec3d<double> const& place : placed.places) {
        Vector3d const relative = toEigen(place) - *settings_.origin;
        Eigen::Vector3f const floats = relative.cast<float>();
        store(record + x.offset, floats.x());
        store(record + y.offset, floats.y());
        store(record + z.offset, floats.z());
        rounding = std::max(rounding, (floats.cast<double>() - relative).cwiseAbs().maxCoeff());
        record += placed_.stride();
    }
    placed.counts.largestRounding = rounding;
}

/// The records hold the directions of the scan.
void PointPlacer::rotateDirections(PlacedBlock& placed) const
{
    std::vector<TrafoT<double>> poses(placed.times.size());
    static_cast<void>(samplePoses(trajectory_, placed.times, poses));
    char* record = placed.points.records.data();
    for (TrafoT<double> const& pose : poses) {
        for (Vector const& fields : directions_) {
            auto const component = [&](Field const& field) {
                return field.type == FieldType::Double
                           ? load<double>(record + field.offset)
                           : static_cast<double>(load<float>(record + field.offset));
            };
            Vector3d const local(component(fields[0]), component(fields[1]), component(fields[2]));
            Vector3d const global = pose.rotation() * local;
            storeFloating(fields[0], record, global.x());
            storeFloating(fields[1], record, global.y());
            storeFloating(fields[2], record, global.z());
        }
        record += placed_.stride();
    }
}

} // namespace oV::Roamscan::tool
