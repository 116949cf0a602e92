#include "tools/placing/PointPlacer.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <roamscan/time/EigenConversion.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <string>
#include <type_traits>
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

/// Calls `work` with a size of bytes as a constant, so that copies of it need no call.
template <typename Work>
void withSize(std::size_t size, Work const& work)
{
    switch (size) {
    case 16:
        return work(std::integral_constant<std::size_t, 16>());
    case 8:
        return work(std::integral_constant<std::size_t, 8>());
    case 4:
        return work(std::integral_constant<std::size_t, 4>());
    case 2:
        return work(std::integral_constant<std::size_t, 2>());
    default:
        return work(std::integral_constant<std::size_t, 1>());
    }
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

/// Neighbouring fields that are copied unchanged make one run, which is cut into pieces of fixed sizes.
void PointPlacer::planCopies()
{
    std::vector<Piece> runs;
    for (std::size_t i = 0; i < scan_.fields().size(); ++i) {
        Field const& from = scan_.fields()[i];
        Field const& to = placed_.fields()[i];
        if (contains(position_, from)) {
            continue;
        }
        bool const continues = !runs.empty() && runs.back().from + runs.back().size == from.offset;
        if (continues) {
            runs.back().size += sizeOf(from.type);
        } else {
            runs.push_back({from.offset, to.offset, sizeOf(from.type)});
        }
    }
    for (Piece run : runs) {
        while (run.size > 0) {
            std::size_t const size = std::min(std::bit_floor(run.size), std::size_t{16});
            pieces_.push_back({run.from, run.to, size});
            run = {run.from + size, run.to + size, run.size - size};
        }
    }
}

void PointPlacer::place(PointBlock const& scan, PlacedBlock& placed) const
{
    placed.times.resize(scan.count);
    time_.read(scan, scan_.stride(), placed.times);
    findPlaces(scan, placed);
    keepPlaced(placed);
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
        count(placePoints(trajectory_,
                          placed.times,
                          std::span<Vec3d<double> const>(placed.places),
                          placed.places,
                          placed.placements,
                          {longestGap, false}),
              placed);
    };
    transform(settings_.longestGap);
    if (settings_.acrossGaps && placed.counts.inGaps > 0) {
        auto const inGaps = placed.counts.inGaps;
        transform(std::numeric_limits<double>::infinity());
        placed.counts.inGaps = inGaps;
    }
}

/// A position of zero is no measurement. It becomes NaN, which is not placed.
void PointPlacer::readMeasured(PointBlock const& scan, std::span<Vec3d<double>> positions) const
{
    Field const& x = position_[0];
    Field const& y = position_[1];
    Field const& z = position_[2];
    if (x.type == y.type && y.type == z.type) {
        withType(x.type, [&](auto zero) {
            char const* record = scan.records.data();
            for (Vec3d<double>& position : positions) {
                position = {static_cast<double>(load<decltype(zero)>(record + x.offset)),
                            static_cast<double>(load<decltype(zero)>(record + y.offset)),
                            static_cast<double>(load<decltype(zero)>(record + z.offset))};
                record += scan_.stride();
            }
        });
    } else if (!positions.empty()) {
        std::size_t const step = sizeof(Vec3d<double>) / sizeof(double);
        scan.read(x, scan_.stride(), &positions[0].x, step);
        scan.read(y, scan_.stride(), &positions[0].y, step);
        scan.read(z, scan_.stride(), &positions[0].z, step);
    }
    for (Vec3d<double>& position : positions) {
        if (position.x == 0.0 && position.y == 0.0 && position.z == 0.0) {
            position.x = std::numeric_limits<double>::quiet_NaN();
        }
    }
}

void PointPlacer::count(PlacementCounts const& found, PlacedBlock& placed)
{
    PlacingCounts counts;
    for (double const time : placed.times) {
        counts.earliest = time < counts.earliest ? time : counts.earliest; // false for NaN
        counts.latest = time > counts.latest ? time : counts.latest;
    }
    if (found.notFinite > 0) {
        counts.withoutTime = static_cast<std::uint64_t>(
            std::ranges::count_if(placed.times, [](double time) { return std::isnan(time); }));
    }
    counts.points = placed.times.size();
    counts.placed = found.placed;
    counts.outside = found.outside;
    counts.inGaps = found.inGap;
    counts.withoutPosition = found.notFinite - counts.withoutTime;
    placed.counts = counts;
}

/// Lists the placed points, and moves their places and times together, unless all are placed.
void PointPlacer::keepPlaced(PlacedBlock& placed)
{
    placed.kept.clear();
    if (placed.counts.placed == placed.placements.size()) {
        return;
    }
    for (std::size_t i = 0; i < placed.placements.size(); ++i) {
        if (placed.placements[i] == PointPlacement::Placed) {
            placed.places[placed.kept.size()] = placed.places[i];
            placed.times[placed.kept.size()] = placed.times[i];
            placed.kept.push_back(static_cast<std::uint32_t>(i));
        }
    }
    placed.places.resize(placed.kept.size());
    placed.times.resize(placed.kept.size());
}

/// Copies the records of placed points without their positions.
void PointPlacer::copyRecords(PointBlock const& scan, PlacedBlock& placed) const
{
    placed.points.resize(placed.counts.placed, placed_);
    bool const all = placed.counts.placed == scan.count;
    for (Piece const& piece : pieces_) {
        char const* const from = scan.records.data() + piece.from;
        char* const to = placed.points.records.data() + piece.to;
        withSize(piece.size, [&](auto size) {
            for (std::size_t i = 0; i < placed.points.count; ++i) {
                std::size_t const record = all ? i : placed.kept[i];
                std::memcpy(to + i * placed_.stride(), from + record * scan_.stride(), size());
            }
        });
    }
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
