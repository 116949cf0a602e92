#include "tools/simulation/BuildingAroundPath.h"

#include "tools/geometry/GroundPlane.h"
#include "tools/simulation/RandomNumbers.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector2d;
using Eigen::Vector3d;

constexpr double clearance = 0.7; // metres from the path to any obstacle
constexpr double below = 1.2;     // metres from the lowest pose to the floor
constexpr double above = 1.0;     // metres from the highest pose to the ceiling
constexpr double bayWidth = 3.5;  // metres, about
constexpr double mostBays = 12.0; // along one side
constexpr double bayWallThickness = 0.15;
constexpr std::uint64_t attempts = 600; // to place obstacles

/// Builds the hall in plan coordinates, where z is up.
class Hall
{
public:
    Hall(std::vector<Vector3d> const& path, std::uint64_t seed) : random_(seed)
    {
        Eigen::AlignedBox3d bounds;
        for (Vector3d const& point : path) {
            bounds.extend(point);
            Vector2d const onPlan = point.head<2>();
            if (path_.empty() || (onPlan - path_.back()).norm() > clearance / 10.0) {
                path_.push_back(onPlan);
            }
        }
        depth_ = std::clamp(0.4 * bounds.sizes().head<2>().maxCoeff(), 2.5, 6.0);
        lowest_ = bounds.min() - Vector3d(depth_, depth_, below);
        highest_ = bounds.max() + Vector3d(depth_, depth_, above);
        addShell(building_, lowest_, highest_);
    }

    /// Short walls at right angles to the outer walls. They form bays of different widths.
    void addBays()
    {
        for (int side = 0; side < 4; ++side) {
            int const along = side % 2;
            int const across = 1 - along;
            double const length = highest_[along] - lowest_[along];
            double const bays = std::clamp(std::round(length / bayWidth), 1.0, mostBays);
            for (double bay = 1.0; bay < bays; bay += 1.0) {
                auto const position =
                    static_cast<std::uint64_t>(side * 100) + static_cast<std::uint64_t>(bay);
                double const wallLength = depth_ * random_.between(0.4, 0.65, position, 1);
                double const shift = random_.between(-0.2, 0.2, position, 2);
                Vector2d centre;
                centre[along] = lowest_[along] + length * (bay + shift) / bays;
                centre[across] =
                    side < 2 ? lowest_[across] + wallLength / 2.0 : highest_[across] - wallLength / 2.0;
                Vector2d size;
                size[along] = bayWallThickness;
                size[across] = wallLength;
                addBox(
                    building_, "bay wall", {centre, size, 0.0, lowest_.z(), highest_.z()}, std::nullopt, 0.7);
            }
        }
    }

    /// Tries random places until enough boxes are clear of the path and of each other.
    void scatter(std::string const& name,
                 std::size_t wanted,
                 Vector2d leastSize,
                 Vector2d mostSize,
                 std::uint64_t what)
    {
        std::size_t placed = 0;
        for (std::uint64_t attempt = 0; attempt < attempts && placed < wanted; ++attempt) {
            auto const draw = [&](double low, double high, std::uint64_t purpose) {
                return random_.between(low, high, attempt, what * 16 + purpose);
            };
            Vector2d const size(draw(leastSize.x(), mostSize.x(), 1), draw(leastSize.y(), mostSize.y(), 2));
            double const angle = draw(0.0, std::numbers::pi, 3);
            // Near the path, so that it is in range of the scanner.
            auto const nearby = static_cast<std::size_t>(draw(0.0, static_cast<double>(path_.size()), 4));
            double const direction = draw(0.0, 2.0 * std::numbers::pi, 5);
            double const away = draw(clearance, clearance + depth_, 6);
            Vector2d const centre = path_[nearby] + away * Vector2d(std::cos(direction), std::sin(direction));
            if (isFree(centre, size.norm() / 2.0)) {
                addBox(building_, name, {centre, size, angle, lowest_.z(), highest_.z()}, std::nullopt, 0.55);
                standing_.push_back({centre, size.norm() / 2.0});
                ++placed;
            }
        }
    }

    [[nodiscard]] Building take() { return std::move(building_); }

private:
    struct Disc
    {
        Vector2d centre;
        double radius;
    };

    [[nodiscard]] bool isFree(Vector2d const& centre, double radius) const
    {
        Eigen::Array2d const bayDepth = Eigen::Array2d::Constant(0.65 * depth_ + radius);
        bool const inside = (centre.array() > lowest_.head<2>().array() + bayDepth).all() &&
                            (centre.array() < highest_.head<2>().array() - bayDepth).all();
        return inside && distanceToPath(centre) > radius + clearance &&
               std::ranges::all_of(standing_, [&](Disc const& d) {
                   return (d.centre - centre).norm() > d.radius + radius + clearance;
               });
    }

    /// The path is straight from each point to the next, which may be far where a recording has a gap.
    [[nodiscard]] double distanceToPath(Vector2d const& point) const
    {
        double nearest = (point - path_.front()).norm();
        for (std::size_t i = 1; i < path_.size(); ++i) {
            Vector2d const edge = path_[i] - path_[i - 1];
            double const along = std::clamp(edge.dot(point - path_[i - 1]) / edge.squaredNorm(), 0.0, 1.0);
            nearest = std::min(nearest, (point - path_[i - 1] - along * edge).norm());
        }
        return nearest;
    }

    RandomNumbers random_;
    Building building_;
    std::vector<Vector2d> path_; // without points that are close together
    std::vector<Disc> standing_;
    Vector3d lowest_;
    Vector3d highest_;
    double depth_ = 0.0; // metres between the path's bounds and the outer walls
};

} // namespace

Building buildingAround(std::vector<Vector3d> const& path, std::uint64_t seed)
{
    Eigen::Matrix3d const planFromBuilding = planRotation(path);
    std::vector<Vector3d> onPlan(path.size());
    std::ranges::transform(path, onPlan.begin(), [&](auto const& point) { return planFromBuilding * point; });

    Hall hall(onPlan, seed);
    hall.addBays();
    hall.scatter("partition", 4, {1.2, 0.12}, {2.4, 0.16}, 1);
    hall.scatter("pillar", 10, {0.3, 0.3}, {0.6, 0.6}, 2);

    Building building = hall.take();
    Eigen::Matrix3d const back = planFromBuilding.transpose();
    for (Surface& surface : building.surfaces) {
        Rectangle const& r = surface.rectangle;
        surface.rectangle = Rectangle(back * r.corner(), back * r.edgeA(), back * r.edgeB());
    }
    return building;
}

} // namespace oV::Roamscan::tool
