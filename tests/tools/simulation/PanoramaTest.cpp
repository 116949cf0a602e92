#include "tools/simulation/Panorama.h"

#include "tools/simulation/RandomNumbers.h"
#include "tools/simulation/RoomPlan.h"

#include <Eigen/Geometry>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;

constexpr double pi = std::numbers::pi;
cv::Size const fourByThree(4, 3);

/// A room of 4 m by 6 m, 1 m below the camera in its middle and 2 m above it.
Building room()
{
    Building building;
    addShell(building, {-2.0, -3.0, -1.0}, {2.0, 3.0, 2.0});
    return building;
}

/// In a picture of 4 by 3 pixels, the columns of a camera of this heading look along y, x, -y and -x.
PanoramaCamera straightCamera()
{
    PanoramaCamera camera;
    camera.heading = -pi / 4.0;
    return camera;
}

cv::Vec3b pixel(Colour const& colour)
{
    auto const byte = [&](int channel) {
        return static_cast<std::uint8_t>(std::lround(255.0F * colour[channel]));
    };
    return {byte(0), byte(1), byte(2)};
}

/// The pixel of a surface of the room that is met at this range and angle.
cv::Vec3b seen(std::string const& name, double range, double cosIncidence)
{
    Building const building = room();
    for (std::size_t i = 0; i < building.surfaces.size(); ++i) {
        if (building.surfaces[i].name == name) {
            return pixel(shade(building.surfaces[i], {range, i, cosIncidence}));
        }
    }
    ADD_FAILURE() << "no " << name;
    return {};
}

int largestDifference(cv::Vec3b const& a, cv::Vec3b const& b)
{
    int largest = 0;
    for (int channel = 0; channel < 3; ++channel) {
        largest = std::max(largest, std::abs(int(a[channel]) - int(b[channel])));
    }
    return largest;
}

void expectDirection(PanoramaCamera const& camera, double x, double y, Vector3d const& expected)
{
    Vector3d const direction = camera.direction({8, 4}, x, y);
    EXPECT_LT((direction - expected).norm(), 1e-12) << x << ", " << y << ": " << direction.transpose();
}

} // namespace

TEST(Panorama, ColumnsAreTheAzimuthClockwise)
{
    PanoramaCamera const camera;
    expectDirection(camera, 4.0, 2.0, {1.0, 0.0, 0.0}); // the middle
    expectDirection(camera, 2.0, 2.0, {0.0, 1.0, 0.0}); // y is to the left of x
    expectDirection(camera, 6.0, 2.0, {0.0, -1.0, 0.0});
    expectDirection(camera, 0.0, 2.0, {-1.0, 0.0, 0.0});
    expectDirection(camera, 8.0, 2.0, {-1.0, 0.0, 0.0});
    expectDirection(camera, 5.0, 2.0, {std::sqrt(0.5), -std::sqrt(0.5), 0.0});
}

TEST(Panorama, RowsAreFromTheZenithToTheNadir)
{
    PanoramaCamera const camera;
    for (double const x : {0.0, 3.0, 8.0}) {
        expectDirection(camera, x, 0.0, {0.0, 0.0, 1.0});
        expectDirection(camera, x, 4.0, {0.0, 0.0, -1.0});
    }
    expectDirection(camera, 4.0, 1.0, {std::sqrt(0.5), 0.0, std::sqrt(0.5)});
    expectDirection(camera, 4.0, 3.0, {std::sqrt(0.5), 0.0, -std::sqrt(0.5)});
}

TEST(Panorama, TheHeadingIsInTheCentre)
{
    PanoramaCamera camera;
    camera.heading = pi / 2.0;
    expectDirection(camera, 4.0, 2.0, {0.0, 1.0, 0.0});
    expectDirection(camera, 2.0, 2.0, {-1.0, 0.0, 0.0});
}

TEST(Panorama, IsUprightInThePlan)
{
    PanoramaCamera camera;
    camera.planFromBuilding = Eigen::AngleAxisd(pi / 2.0, Vector3d::UnitX()).toRotationMatrix(); // y is up
    expectDirection(camera, 3.0, 0.0, {0.0, 1.0, 0.0});
    expectDirection(camera, 4.0, 2.0, {1.0, 0.0, 0.0});
    expectDirection(camera, 2.0, 2.0, {0.0, 0.0, -1.0});
}

TEST(Panorama, TheLastColumnIsNextToTheFirst)
{
    PanoramaCamera camera;
    camera.heading = 0.7;
    cv::Size const size(100, 50);
    Vector3d const first = camera.direction(size, 0.5, 25.0);
    Vector3d const last = camera.direction(size, 99.5, 25.0);
    EXPECT_NEAR(std::acos(first.dot(last)), 2.0 * pi / 100.0, 1e-9);
    EXPECT_LT((camera.direction(size, 100.5, 25.0) - first).norm(), 1e-12);
}

TEST(Panorama, ShowsTheSurfaceInEachDirection)
{
    cv::Mat const picture = takePanorama(straightCamera(), room(), fourByThree);
    ASSERT_EQ(picture.size(), fourByThree);
    ASSERT_EQ(picture.type(), CV_8UC3);
    std::vector<cv::Vec3b> const walls{seen("outer wall, north", 3.0, 1.0),
                                       seen("outer wall, east", 2.0, 1.0),
                                       seen("outer wall, south", 3.0, 1.0),
                                       seen("outer wall, west", 2.0, 1.0)};
    // The upper and the lower row look 60 degrees up and down.
    double const cosine = std::sqrt(0.75);
    cv::Vec3b const ceiling = seen("ceiling", 2.0 / cosine, cosine);
    cv::Vec3b const floor = seen("floor", 1.0 / cosine, cosine);
    for (int column = 0; column < 4; ++column) {
        EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(0, column), ceiling), 1) << column;
        EXPECT_LE(
            largestDifference(picture.at<cv::Vec3b>(1, column), walls[static_cast<std::size_t>(column)]), 1)
            << column;
        EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(2, column), floor), 1) << column;
    }
}

TEST(Panorama, ABoxOccludesTheWall)
{
    Building building = room();
    addBox(building, "cupboard", {{1.5, 0.0}, {1.0, 1.0}, 0.0, -1.0, 0.5}, 0.5, 0.45);
    cv::Mat const picture = takePanorama(straightCamera(), building, fourByThree);
    cv::Vec3b const front =
        pixel(shade({"cupboard", building.surfaces.back().rectangle, 0.45}, {1.0, 0, 1.0}));
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(1, 1), front), 1);
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(1, 0), seen("outer wall, north", 3.0, 1.0)), 1);
}

TEST(Panorama, TheCameraIsAtItsPosition)
{
    PanoramaCamera camera = straightCamera();
    camera.position = {1.0, -1.0, 0.0};
    cv::Mat const picture = takePanorama(camera, room(), fourByThree);
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(1, 0), seen("outer wall, north", 4.0, 1.0)), 1);
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(1, 1), seen("outer wall, east", 1.0, 1.0)), 1);
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(1, 2), seen("outer wall, south", 2.0, 1.0)), 1);
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(1, 3), seen("outer wall, west", 3.0, 1.0)), 1);
}

TEST(Panorama, EveryPixelShowsTheFirstSurfaceOnItsRay)
{
    Building const building = roomPlan();
    RandomNumbers const random(11);
    for (std::uint64_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        PanoramaCamera camera;
        camera.position = {random.between(0.0, 24.0, i, 1), random.between(0.0, 14.0, i, 2), 1.5};
        camera.heading = random.between(-pi, pi, i, 3);
        cv::Size const size(121, 67); // no multiple of anything
        cv::Mat const picture = takePanorama(camera, building, size);
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                auto const hit = building.castRay(camera.position,
                                                  camera.direction(size, x + 0.5, y + 0.5),
                                                  std::numeric_limits<double>::infinity());
                ASSERT_TRUE(hit);
                ASSERT_EQ(picture.at<cv::Vec3b>(y, x), pixel(shade(building.surfaces[hit->surface], *hit)))
                    << x << ", " << y;
            }
        }
    }
}

TEST(Panorama, DirectionsWithoutASurfaceShowTheBackground)
{
    cv::Mat const picture = takePanorama({}, {}, {3, 2});
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(picture.at<cv::Vec3b>(y, x), pixel(emptiness()));
        }
    }
}

TEST(Panorama, ASinglePixelShowsTheHeading)
{
    PanoramaCamera camera;
    camera.heading = pi / 2.0;
    cv::Mat const picture = takePanorama(camera, room(), {1, 1});
    EXPECT_LE(largestDifference(picture.at<cv::Vec3b>(0, 0), seen("outer wall, north", 3.0, 1.0)), 1);
}

TEST(Panorama, TheSurfacesOfARoomHaveColoursOfTheirOwn)
{
    std::vector<std::string> const names{"floor",
                                         "ceiling",
                                         "outer wall, south",
                                         "outer wall, north",
                                         "outer wall, west",
                                         "outer wall, east",
                                         "corridor wall, north",
                                         "corridor wall, north, above a door",
                                         "pillar",
                                         "cupboard"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_GE(largestDifference(pixel(surfaceColour(names[i])), pixel(surfaceColour(names[j]))), 5)
                << names[i] << " and " << names[j];
        }
    }
}

TEST(Panorama, ColoursDoNotDependOnTheMachine)
{
    // The hash is 0x49473311: hue 0x4947 / 0x10000 = 0.2862 of a turn, saturation 0.2 + 0.25 * 0x3311 /
    // 0x10000 = 0.2499.
    EXPECT_EQ(pixel(surfaceColour("pillar")), cv::Vec3b(191, 255, 209));
}

TEST(Panorama, LightFallsOffWithRangeAngleAndReflectance)
{
    Surface const surface = room().surfaces.front();
    auto const light = [&](double range, double cosIncidence, double reflectance) {
        Surface changed = surface;
        changed.reflectance = reflectance;
        Colour const colour = shade(changed, {range, 0, cosIncidence});
        return colour[0] + colour[1] + colour[2];
    };
    EXPECT_GT(light(1.0, 0.8, 0.5), light(5.0, 0.8, 0.5));
    EXPECT_GT(light(1.0, 0.8, 0.5), light(1.0, 0.3, 0.5));
    EXPECT_GT(light(1.0, 0.8, 0.5), light(1.0, 0.8, 0.2));
    EXPECT_NEAR(light(15.0, 1.0, 0.5) / light(0.0, 1.0, 0.5), 0.5F, 1e-5F);
    EXPECT_GT(light(30.0, 0.0, 0.0), 0.0F);
}
