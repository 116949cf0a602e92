#include "tools/simulation/AnchorScan.h"

#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/WalkMotion.h"

#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include <numbers>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Content = AnchorScanMetadata::PanoramaPicture::Content;
using Eigen::Vector3d;
using ImageOrientation = AnchorScanMetadata::PanoramaPicture::ImageOrientation;

/// Goes along y at 1 m/s, pointing along y, from second 100 on; metres and seconds agree.
class StraightMotion : public Motion
{
public:
    explicit StraightMotion(double duration) : Motion(100.0, 100.0 + duration) {}

    [[nodiscard]] Eigen::Isometry3d at(double time) const override
    {
        Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
        pose.translate(Vector3d(0.0, time - 100.0, 1.0));
        pose.rotate(Eigen::AngleAxisd(std::numbers::pi / 2.0, Vector3d::UnitZ()));
        return pose;
    }
};

} // namespace

TEST(AnchorScan, IsTakenByTheCameraInTheMiddleOfTheMotion)
{
    AnchorScan const scan = anchorScan(StraightMotion(8.0), Eigen::Matrix3d::Identity(), "a.png");
    // The camera is 0.05 m before the body and 0.45 m above it.
    EXPECT_LT((scan.camera.position - Vector3d(0.0, 4.05, 1.45)).norm(), 1e-12);
    EXPECT_NEAR(scan.camera.heading, std::numbers::pi / 2.0, 1e-12);
    EXPECT_EQ(scan.metadata.horizontalAngle, scan.camera.heading);
    EXPECT_EQ(scan.metadata.horizontalVelocity, 0.0);
    EXPECT_EQ(scan.metadata.id, 1U);
}

TEST(AnchorScan, TimesAreATenthOfASecondAroundThePicture)
{
    AnchorScan const scan = anchorScan(StraightMotion(8.0), Eigen::Matrix3d::Identity(), "a.png");
    EXPECT_EQ(scan.metadata.startTime, 10'395'000'000);
    EXPECT_EQ(scan.metadata.endTime, 10'405'000'000);
    ASSERT_EQ(scan.metadata.panoramaPictures.size(), 1U);
    EXPECT_EQ(scan.metadata.panoramaPictures[0].time, 10'400'000'000);
}

TEST(AnchorScan, TimesDoNotLeaveTheMotion)
{
    AnchorScan const scan = anchorScan(StraightMotion(0.02), Eigen::Matrix3d::Identity(), "a.png");
    EXPECT_EQ(scan.metadata.startTime, 10'000'000'000);
    EXPECT_EQ(scan.metadata.panoramaPictures.at(0).time, 10'001'000'000);
    EXPECT_EQ(scan.metadata.endTime, 10'002'000'000);
}

TEST(AnchorScan, ThePictureIsStitchedAndUpright)
{
    auto const pictures =
        anchorScan(StraightMotion(8.0), Eigen::Matrix3d::Identity(), "a.png").metadata.panoramaPictures;
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0].fileName, "a.png");
    EXPECT_EQ(pictures[0].content, Content::ContentStitched);
    EXPECT_EQ(pictures[0].imageOrientation, ImageOrientation::OrientationUpright);
    EXPECT_EQ(pictures[0].camManufacturer, "simulated");
    EXPECT_FALSE(pictures[0].camModel.empty());
    EXPECT_FALSE(pictures[0].camSerialNumber.empty());
    EXPECT_FALSE(pictures[0].camFirmwareVersion.empty());
}

TEST(AnchorScan, TheHeadingIsThatOfThePlan)
{
    // The frame's y is the plan's -x.
    Eigen::Matrix3d const planFromBuilding =
        Eigen::AngleAxisd(std::numbers::pi / 2.0, Vector3d::UnitZ()).toRotationMatrix();
    AnchorScan const scan = anchorScan(StraightMotion(8.0), planFromBuilding, "a.png");
    EXPECT_NEAR(std::abs(scan.camera.heading), std::numbers::pi, 1e-12);
    EXPECT_EQ(scan.camera.planFromBuilding, planFromBuilding);
    EXPECT_LT((scan.camera.direction({2, 1}, 1.0, 0.5) - Vector3d::UnitY()).norm(), 1e-12);
}

TEST(AnchorScan, TheCentreOfThePictureIsTheDirectionOfTheWalk)
{
    WalkMotion const walk(roundWalk(), 10.0, 0.0);
    AnchorScan const scan = anchorScan(walk, Eigen::Matrix3d::Identity(), "a.png");
    double const middle = (walk.startTime() + walk.stopTime()) / 2.0;
    Vector3d const step = walk.at(middle + 0.5).translation() - walk.at(middle - 0.5).translation();
    EXPECT_GT(scan.camera.direction({2, 1}, 1.0, 0.5).dot(step.normalized()), 0.95);
}
