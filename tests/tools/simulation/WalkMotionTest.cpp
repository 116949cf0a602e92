#include "tools/simulation/WalkMotion.h"

#include "tools/simulation/RoomPlan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;

constexpr double seconds = 90.0; // more than one round

WalkMotion const& walk()
{
    static WalkMotion const motion(roundWalk(), seconds, 1.0);
    return motion;
}

/// The places a hundredth of a second apart.
std::vector<Vector3d> places()
{
    std::vector<Vector3d> found;
    for (int i = 0; i <= static_cast<int>(100 * seconds); ++i) {
        found.emplace_back(walk().at(walk().startTime() + 0.01 * i).translation());
    }
    return found;
}

} // namespace

TEST(WalkMotion, LastsAsLongAsAsked)
{
    EXPECT_EQ(walk().stopTime() - walk().startTime(), seconds);
}

TEST(WalkMotion, NeverCrossesASurface)
{
    Building const building = roomPlan();
    std::vector<Vector3d> const path = places();
    for (std::size_t i = 1; i < path.size(); ++i) {
        Vector3d const step = path[i] - path[i - 1];
        ASSERT_FALSE(building.castRay(path[i - 1], step.normalized(), step.norm())) << path[i].transpose();
    }
}

TEST(WalkMotion, KeepsClearOfWallsAndStaysInside)
{
    Building const building = roomPlan();
    for (Vector3d const& place : places()) {
        ASSERT_TRUE((place.array() > 0.0).all() && place.x() < 24.0 && place.y() < 14.0 && place.z() < 2.8);
        for (Surface const& surface : building.surfaces) {
            ASSERT_GT(surface.rectangle.distance(place), 0.3) << surface.name << " at " << place.transpose();
        }
    }
}

TEST(WalkMotion, LeadsThroughAllRoomsAndTheCorridor)
{
    std::set<int> rooms;
    for (Vector3d const& place : places()) {
        if (place.y() < 5.8) {
            rooms.insert(place.x() < 8.0 ? 1 : (place.x() < 15.5 ? 2 : 3));
        } else if (place.y() > 8.2) {
            rooms.insert(place.x() < 7.0 ? 4 : (place.x() < 16.0 ? 5 : 6));
        } else {
            rooms.insert(0);
        }
    }
    EXPECT_EQ(rooms, (std::set<int>{0, 1, 2, 3, 4, 5, 6}));
}

TEST(WalkMotion, MovesForwardsAtWalkingSpeed)
{
    for (double t = walk().startTime(); t < walk().stopTime(); t += 0.05) {
        Eigen::Isometry3d const pose = walk().at(t);
        Vector3d const velocity =
            (walk().at(t + 1e-4).translation() - walk().at(t - 1e-4).translation()) / 2e-4;
        ASSERT_GT(velocity.norm(), 0.5) << t;
        ASSERT_LT(velocity.norm(), 1.6) << t;
        Vector3d const forwards = pose.linear().col(0);
        ASSERT_GT(forwards.dot(velocity.normalized()), 0.9) << t;
        ASSERT_GT(pose.linear().col(2).z(), 0.99) << "upright " << t;
        ASSERT_LT((pose.linear().transpose() * pose.linear() - Eigen::Matrix3d::Identity()).norm(), 1e-12);
    }
}

TEST(WalkMotion, AccelerationsAreContinuous)
{
    // A jump in the acceleration would not shrink with the step; here they shrink in proportion to it.
    auto const largestChange = [](double step) {
        double largest = 0.0;
        auto const acceleration = [&](double t) -> Vector3d {
            constexpr double h = 1e-3;
            return (walk().at(t + h).translation() - 2.0 * walk().at(t).translation() +
                    walk().at(t - h).translation()) /
                   (h * h);
        };
        for (double t = walk().startTime() + 1.0; t < walk().startTime() + 65.0; t += step) {
            largest = std::max(largest, (acceleration(t + step) - acceleration(t)).norm());
        }
        return largest;
    };
    double const coarse = largestChange(0.02);
    double const fine = largestChange(0.005);
    EXPECT_LT(fine, 0.35 * coarse);
}
