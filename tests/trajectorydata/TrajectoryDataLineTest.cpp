#include "tests/support/SpecialNumbers.h"

#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Line;
using oV::Object;
using oV::Sphere;
using oV::Transform;
using oV::Roamscan::Device;
using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryData;
using support::notANumber;
using Points = std::vector<Bv_1_1::Vec3d<double>>;

TrafoT<double> at(double x, double y, double z)
{
    return TrafoT<double>::Translation({x, y, z});
}

/// A store whose devices 0 and 1 are at the origin of the nodes' frame.
TrajectoryData storeOf(std::vector<std::pair<double, TrafoT<double>>> const& poses)
{
    TrajectoryData store;
    for (auto const& [time, pose] : poses) {
        store.nodes.emplace_back(time, pose);
    }
    store.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    store.devicePositions[Device::Device1] = TrafoT<double>::Identity();
    return store;
}

Object const& child(SmartPtr<Transform> const& scene, std::size_t index)
{
    return *scene->children()[index].object;
}

/// The last child, which is the line.
Line const& lineOf(SmartPtr<Transform> const& scene)
{
    return dynamic_cast<Line const&>(*scene->children().back().object);
}

Points pointsOf(SmartPtr<Transform> const& scene)
{
    auto const points = lineOf(scene).points();
    return {points.begin(), points.end()};
}

Sphere const& marker(SmartPtr<Transform> const& scene, std::size_t index)
{
    return dynamic_cast<Sphere const&>(child(scene, index));
}

std::string messageOf(TrajectoryData const& store, Device from, Device to)
{
    try {
        auto const scene = store.lineFromTrajectory(true, L"walk", from, to);
    } catch (oV::InternalErrorException const& failure) {
        return failure.getDesc().stringAnsi();
    }
    return {};
}

constexpr char const* missingFrom = "Cannot build trajectory without from device position.";
constexpr char const* missingTo = "Cannot build trajectory without to device position.";

} // namespace

TEST(TrajectoryDataLine, HasTheNameOnTheObjectAndOnTheLine)
{
    auto const scene = storeOf({{1.0, at(1, 2, 3)}}).lineFromTrajectory(false, L"walk", Device::Device0);
    EXPECT_EQ(scene->getName(), String(L"walk"));
    EXPECT_EQ(lineOf(scene).getName(), String(L"walk"));
    EXPECT_EQ(lineOf(scene).key(), String(L"Line"));
    EXPECT_EQ(scene->referenceCount(), 1U);
    EXPECT_EQ(scene->getClassType(), Transform::Class());
}

TEST(TrajectoryDataLine, WithoutNodesTheLineIsTheOnlyChild)
{
    auto const scene = storeOf({{1.0, at(1, 2, 3)}, {2.0, at(4, 5, 6)}})
                           .lineFromTrajectory(false, L"walk", Device::Device0, Device::Device1);
    ASSERT_EQ(scene->children().size(), 1U);
    EXPECT_EQ(scene->children()[0].place, 48);
    EXPECT_EQ(pointsOf(scene), (Points{{1, 2, 3}, {4, 5, 6}}));
}

TEST(TrajectoryDataLine, MarkersInNodeOrderComeBeforeTheLine)
{
    auto const scene = storeOf({{1.0, at(1, 2, 3)}, {2.5, at(4, 5, 6)}})
                           .lineFromTrajectory(true, L"walk", Device::Device0, Device::Device1);
    ASSERT_EQ(scene->children().size(), 3U);
    for (Object::Child const& each : scene->children()) {
        EXPECT_EQ(each.place, 48);
        EXPECT_EQ(each.object->referenceCount(), 1U);
    }
    EXPECT_EQ(marker(scene, 0).getName(), String(L"Node_1"));
    EXPECT_EQ(marker(scene, 0).position(), (Bv_1_1::Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(marker(scene, 0).size(), 0.01);
    EXPECT_EQ(marker(scene, 1).getName(), String(L"Node_2.5"));
    EXPECT_EQ(marker(scene, 1).position(), (Bv_1_1::Vec3d<double>{4, 5, 6}));
    EXPECT_EQ(child(scene, 2).getClassType(), Line::Class());
}

TEST(TrajectoryDataLine, IsThatOfTheTrajectoryBetweenTheDevices)
{
    TrajectoryData store = storeOf({{1.0, at(100, 200, 300)}});
    store.devicePositions[Device::Device0] = at(0, 10, 0);
    store.devicePositions[Device::Device1] = at(1, 0, 0);
    auto const scene = store.lineFromTrajectory(false, L"walk", Device::Device1, Device::Device0);
    EXPECT_EQ(pointsOf(scene), (Points{{101, 190, 300}}));
}

TEST(TrajectoryDataLine, OfOneDeviceHasItInBothRoles)
{
    TrajectoryData store = storeOf({{1.0, at(100, 200, 300)}});
    store.devicePositions[Device::Device1] = at(1, 0, 0);
    EXPECT_EQ(pointsOf(store.lineFromTrajectory(false, L"walk", Device::Device1)), (Points{{100, 200, 300}}));
}

TEST(TrajectoryDataLine, NodesOutOfOrderGiveALineThatRunsBackAndForth)
{
    auto const scene = storeOf({{3.0, at(3, 0, 0)}, {1.0, at(1, 0, 0)}, {2.0, at(2, 0, 0)}})
                           .lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_EQ(pointsOf(scene), (Points{{3, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_EQ(marker(scene, 0).getName(), String(L"Node_3"));
    EXPECT_EQ(marker(scene, 2).getName(), String(L"Node_2"));
}

TEST(TrajectoryDataLine, NodesAtTheSameTimeAllHaveThePoseOfTheLast)
{
    auto const scene =
        storeOf({{1.0, at(1, 0, 0)}, {1.0, at(2, 0, 0)}}).lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_EQ(pointsOf(scene), (Points{{2, 0, 0}, {2, 0, 0}}));
    EXPECT_EQ(scene->children().size(), 3U);
}

TEST(TrajectoryDataLine, AFirstNodeThatRoundsToBeforeTheTrajectoryIsSkipped)
{
    auto const scene = storeOf({{1.000000004, at(1, 0, 0)}, {2.0, at(2, 0, 0)}})
                           .lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_EQ(pointsOf(scene), (Points{{2, 0, 0}}));
    ASSERT_EQ(scene->children().size(), 2U);
    EXPECT_EQ(marker(scene, 0).getName(), String(L"Node_2"));
}

TEST(TrajectoryDataLine, ALastNodeThatRoundsToPastTheTrajectoryIsSkipped)
{
    auto const scene = storeOf({{1.0, at(1, 0, 0)}, {1.999999996, at(2, 0, 0)}})
                           .lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_EQ(pointsOf(scene), (Points{{1, 0, 0}}));
    EXPECT_EQ(scene->children().size(), 2U);
}

TEST(TrajectoryDataLine, AStoreWithoutNodesGivesAnEmptyLine)
{
    auto const scene = storeOf({}).lineFromTrajectory(true, L"walk", Device::Device0);
    ASSERT_EQ(scene->children().size(), 1U);
    EXPECT_TRUE(lineOf(scene).points().empty());
    EXPECT_EQ(lineOf(scene).getName(), String(L"walk"));
}

TEST(TrajectoryDataLine, APointAtTheOriginIsNotOnTheLineYetHasAMarker)
{
    auto const scene =
        storeOf({{1.0, at(0, 0, 0)}, {2.0, at(1, 0, 0)}}).lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_EQ(pointsOf(scene), (Points{{1, 0, 0}}));
    ASSERT_EQ(scene->children().size(), 3U);
    EXPECT_EQ(marker(scene, 0).getName(), String(L"Node_1"));
    EXPECT_EQ(marker(scene, 0).position(), Bv_1_1::Vec3d<double>{});
}

TEST(TrajectoryDataLine, ANegativeZeroIsZero)
{
    auto const scene =
        storeOf({{1.0, at(-0.0, 0, -0.0)}}).lineFromTrajectory(false, L"walk", Device::Device0);
    EXPECT_TRUE(pointsOf(scene).empty());
}

TEST(TrajectoryDataLine, OneCoordinateOffTheOriginIsEnough)
{
    for (auto const& pose : {at(-1e-300, 0, 0), at(0, 1e-300, 0), at(0, 0, -5)}) {
        auto const scene = storeOf({{1.0, pose}}).lineFromTrajectory(false, L"walk", Device::Device0);
        EXPECT_EQ(pointsOf(scene).size(), 1U);
    }
}

TEST(TrajectoryDataLine, APointOfNaNIsNotOnTheLineYetHasAMarker)
{
    // The composition with the device positions makes all three coordinates NaN.
    auto const scene =
        storeOf({{1.0, at(notANumber, 1, 0)}}).lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_TRUE(pointsOf(scene).empty());
    ASSERT_EQ(scene->children().size(), 2U);
    EXPECT_TRUE(std::isnan(marker(scene, 0).position().x));
    EXPECT_TRUE(std::isnan(marker(scene, 0).position().y));
}

TEST(TrajectoryDataLine, ThePoseIsAppliedInFullSoARotationOfNaNCounts)
{
    TrafoT<double> const pose(
        Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond(notANumber, notANumber, notANumber, notANumber), true);
    auto const scene = storeOf({{1.0, pose}}).lineFromTrajectory(true, L"walk", Device::Device0);
    EXPECT_TRUE(pointsOf(scene).empty());
    EXPECT_TRUE(std::isnan(marker(scene, 0).position().x));
    EXPECT_TRUE(std::isnan(marker(scene, 0).position().z));
}

TEST(TrajectoryDataLine, AMissingFromDeviceIsReportedFirst)
{
    TrajectoryData store = storeOf({{1.0, at(1, 2, 3)}});
    EXPECT_EQ(messageOf(store, Device::Device2, Device::Device3), missingFrom);
    EXPECT_EQ(messageOf(store, Device::Device2, Device::Device0), missingFrom);
    EXPECT_EQ(messageOf(store, Device::Device0, Device::Device2), missingTo);
}

TEST(TrajectoryDataLine, TheFormWithOneDeviceReportsItAsTheFromDevice)
{
    TrajectoryData const store = storeOf({{1.0, at(1, 2, 3)}});
    try {
        auto const scene = store.lineFromTrajectory(false, L"walk", Device::Device2);
        FAIL();
    } catch (oV::InternalErrorException const& failure) {
        EXPECT_STREQ(failure.getDesc().stringAnsi(), missingFrom);
        EXPECT_STREQ(failure.getFunction().stringAnsi(),
                     "oV::Roamscan::TrajectoryData::buildTrajectoryFromTrajectoryNodes");
        EXPECT_STREQ(failure.getFile().stringAnsi(), "TrajectoryData");
    }
}

TEST(TrajectoryDataLine, ANullNameStaysNull)
{
    auto const scene = storeOf({}).lineFromTrajectory(false, String::NIL, Device::Device0);
    EXPECT_TRUE(scene->getName().isNil());
    EXPECT_TRUE(lineOf(scene).getName().isNil());
}
