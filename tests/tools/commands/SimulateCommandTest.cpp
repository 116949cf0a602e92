#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/imagery/AnchorScanMetadata.h>
#include <roamscan/imagery/LargeImageSerialization.h>
#include <roamscan/time/TimeConversion.h>

#include <Eigen/Core>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <opencv2/core.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::lineCount;
using support::readCloud;
using support::ToolFixture;
using support::ToolRun;
using testing::HasSubstr;
using Names = std::vector<std::string>;

class SimulateCommandTest : public ToolFixture
{
protected:
    /// A short walk into the folder, with a panorama of so many columns.
    [[nodiscard]] ToolRun simulate(std::string const& folder, std::string const& columns) const
    {
        return run({"simulate", file(folder), "--seconds", "0.05", "--panorama", columns});
    }

    [[nodiscard]] cv::Mat panorama(std::string const& folder) const
    {
        auto const path = Bv_1_1::String::fromUtf16(file(folder + "/panorama.png").u16string());
        return LargeImageSerialization::readImage(Bv_1_1::File::fromPath(path));
    }

    [[nodiscard]] Names namesIn(std::string const& folder) const
    {
        Names found;
        for (auto const& entry : std::filesystem::directory_iterator(file(folder))) {
            found.push_back(entry.path().filename().string());
        }
        std::ranges::sort(found);
        return found;
    }
};

Names const everything{
    "building.json", "panorama", "panorama.json", "scan.ply", "walk.sensors", "walk.trajectory"};

} // namespace

TEST_F(SimulateCommandTest, WritesAWalkItsSensorsAScanAndABuilding)
{
    ToolRun const simulate = run({"simulate", file("new/walk"), "--seconds", "0.5", "--panorama", "40"});
    EXPECT_EQ(simulate.status, 0) << simulate.err;
    auto const data = readTrajectoryFile(file("new/walk/walk.trajectory")).data;
    EXPECT_EQ(data->nodes.size(), 51U);
    EXPECT_EQ(data->nodes.back().time - data->nodes.front().time, 0.5);
    EXPECT_EQ(listDevices(*data), "0, 1, 2 and 3");
    EXPECT_EQ(data->devicePositions.at(Device::Device0), TrafoT<double>::Identity());
    EXPECT_GT(readCloud(file("new/walk/scan.ply")).size(), 17'500U); // 20,000 a second for 0.9 s
    auto const sensors = readSensorFile(file("new/walk/walk.sensors")).data;
    EXPECT_EQ(sensors->imuData.at("imu1").size(), 101U);
    EXPECT_EQ(sensors->imuData.at("imu2").size(), 101U);
    EXPECT_GT(sensors->rangefinderData.at("scanner1").size(), 400U); // 500 a second for 0.9 s
    EXPECT_GT(sensors->rangefinderData.at("scanner2").size(), 400U);
    EXPECT_EQ(sensors->sensorPoses.size(), 4U);
    EXPECT_FALSE(sensors->posesApplied);
    EXPECT_NE(simulate.out.find(std::to_string(tableCount(*sensors)) + " of 1000000 tables"),
              std::string::npos)
        << simulate.out;
    EXPECT_NE(read("new/walk/building.json").find("\"name\": \"floor\""), std::string::npos);
    EXPECT_EQ(namesIn("new/walk"), everything);
}

TEST_F(SimulateCommandTest, SameSeedSameFiles)
{
    for (std::string const name : {"a", "b"}) {
        ASSERT_EQ(run({"simulate", file(name), "--seconds", "0.1", "--seed", "7", "--panorama", "40"}).status,
                  0);
    }
    ASSERT_EQ(run({"simulate", file("c"), "--seconds", "0.1", "--seed", "8", "--panorama", "40"}).status, 0);
    for (std::string const name :
         {"walk.trajectory", "walk.sensors", "scan.ply", "building.json", "panorama.json", "panorama/0.png"})
    {
        EXPECT_NE(read("a/" + name), "") << name;
        EXPECT_TRUE(read("a/" + name) == read("b/" + name)) << name;
    }
    EXPECT_FALSE(read("a/scan.ply") == read("c/scan.ply"));
    EXPECT_FALSE(read("a/walk.sensors") == read("c/walk.sensors"));
    EXPECT_FALSE(read("a/walk.trajectory") == read("c/walk.trajectory"));
}

TEST_F(SimulateCommandTest, TheDurationIsBounded)
{
    for (std::string const seconds : {"0", "-1", "86401", "nan", "inf", "x"}) {
        ToolRun const simulate = run({"simulate", file("a"), "--seconds", seconds});
        EXPECT_EQ(simulate.status, 1) << seconds;
        EXPECT_EQ(lineCount(simulate.err), 1) << simulate.err;
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(SimulateCommandTest, TheShortestWalkHasTwoPoses)
{
    ASSERT_EQ(run({"simulate", file("a"), "--seconds", "0.001", "--panorama", "0"}).status, 0);
    EXPECT_EQ(readTrajectoryFile(file("a/walk.trajectory")).data->nodes.size(), 2U);
}

TEST_F(SimulateCommandTest, FollowsARecordingPoseByPose)
{
    auto const poses = write(
        "poses.txt",
        "1400000000.5 2 1 1 0 0 0.6 0.8\n1400000000 0 0 1 0 0 0 1\n1400000000.25 1 0 1.2 0 0.6 0 0.8\n");
    ASSERT_EQ(run({"import", "--format", "tum", poses, file("r.trajectory")}).status, 0);
    ToolRun const simulate =
        run({"simulate", file("a"), "--along", file("r.trajectory"), "--panorama", "40"});
    ASSERT_EQ(simulate.status, 0) << simulate.err;
    auto const data = readTrajectoryFile(file("a/walk.trajectory")).data;
    ASSERT_EQ(data->nodes.size(), 3U);
    EXPECT_EQ(data->nodes[0].time, 1400000000.0);
    EXPECT_EQ(data->nodes[1].time, 1400000000.25);
    EXPECT_EQ(data->nodes[2].time, 1400000000.5);
    EXPECT_TRUE(data->nodes[2].pose.isApprox(TrafoT<double>({2, 1, 1}, {0.8, 0, 0, 0.6}, true), 1e-12));
    EXPECT_EQ(listDevices(*data), "0, 1, 2 and 3");
    auto const samples = readSensorFile(file("a/walk.sensors")).data->imuData.at("imu1");
    EXPECT_EQ(samples.begin()->first, 140000000000000000);
    EXPECT_EQ(samples.rbegin()->first, 140000000050000000);
    auto const metadata = nlohmann::json::parse(read("a/panorama.json")).get<AnchorScanMetadata>();
    EXPECT_EQ(metadata.panoramaPictures.at(0).time, 140000000025000000);
}

TEST_F(SimulateCommandTest, NothingIsLeftOnFailure)
{
    auto const poses = write("poses.txt", "1 0 0 1 0 0 0 1\n");
    ASSERT_EQ(run({"import", "--format", "tum", poses, file("r.trajectory")}).status, 0);
    ToolRun const one = run({"simulate", file("a"), "--along", file("r.trajectory")});
    EXPECT_EQ(one.status, 1);
    EXPECT_NE(one.err.find("two different times"), std::string::npos);
    EXPECT_EQ(run({"simulate", file("a"), "--along", file("none")}).status, 1);
    EXPECT_EQ(run({"simulate", file("poses.txt"), "--seconds", "1"}).status, 1);
    for (std::string const taken : {"walk.sensors", "scan.ply", "panorama.json", "panorama/notes"}) {
        std::filesystem::create_directories(file("b/" + taken));
        EXPECT_EQ(simulate("b", "40").status, 1);
        EXPECT_EQ(namesIn("b").size(), 1U);
        EXPECT_TRUE(std::filesystem::is_directory(file("b/" + taken)));
        std::filesystem::remove_all(file("b"));
    }
    EXPECT_EQ(names(), (Names{"poses.txt", "r.trajectory"}));
}

TEST_F(SimulateCommandTest, TheRecordingIsNotOverwritten)
{
    ASSERT_EQ(simulate("a", "0").status, 0);
    std::string const before = read("a/walk.trajectory");
    EXPECT_EQ(run({"simulate", file("a"), "--along", file("a/walk.trajectory")}).status, 1);
    EXPECT_TRUE(read("a/walk.trajectory") == before);
}

TEST_F(SimulateCommandTest, ThePanoramaIsInTilesOfAThousandColumns)
{
    ToolRun const simulated = simulate("a", "1001");
    ASSERT_EQ(simulated.status, 0) << simulated.err;
    EXPECT_THAT(simulated.out, HasSubstr("1001 x 501 pixels of the panorama\n"));
    EXPECT_EQ(namesIn("a/panorama"), (Names{"0.png", "1.png"}));
    cv::Mat const picture = panorama("a");
    EXPECT_EQ(picture.size(), cv::Size(1001, 501));
    EXPECT_EQ(picture.type(), CV_8UC3);
    // Straight up is the bright ceiling, straight down the dark floor.
    EXPECT_GT(picture.at<cv::Vec3b>(0, 500)[0], picture.at<cv::Vec3b>(500, 500)[0] + 50);
}

TEST_F(SimulateCommandTest, TheMetadataOfThePanoramaReadsBack)
{
    ASSERT_EQ(simulate("a", "40").status, 0);
    auto const metadata = nlohmann::json::parse(read("a/panorama.json")).get<AnchorScanMetadata>();
    auto const nodes = readTrajectoryFile(file("a/walk.trajectory")).data->nodes;
    auto const start = TimeConversion::convertToIntegerTime(nodes.front().time);
    EXPECT_EQ(metadata.startTime, start);
    EXPECT_EQ(metadata.endTime, start + 5'000'000);
    EXPECT_EQ(metadata.id, 1U);
    EXPECT_EQ(metadata.horizontalVelocity, 0.0);
    ASSERT_EQ(metadata.panoramaPictures.size(), 1U);
    auto const& picture = metadata.panoramaPictures[0];
    EXPECT_EQ(picture.time, start + 2'500'000);
    EXPECT_EQ(picture.fileName, "panorama.png");
    EXPECT_EQ(picture.content, AnchorScanMetadata::PanoramaPicture::Content::ContentStitched);
    EXPECT_EQ(picture.imageOrientation,
              AnchorScanMetadata::PanoramaPicture::ImageOrientation::OrientationUpright);
}

TEST_F(SimulateCommandTest, TheHeadingOfThePanoramaIsThatOfTheWalk)
{
    ASSERT_EQ(simulate("a", "40").status, 0);
    auto const metadata = nlohmann::json::parse(read("a/panorama.json")).get<AnchorScanMetadata>();
    auto const nodes = readTrajectoryFile(file("a/walk.trajectory")).data->nodes;
    Eigen::Vector3d const forwards = nodes.at(nodes.size() / 2).pose.rotation() * Eigen::Vector3d::UnitX();
    EXPECT_NEAR(metadata.horizontalAngle, std::atan2(forwards.y(), forwards.x()), 0.05);
}

TEST_F(SimulateCommandTest, TilesOfAPreviousPanoramaAreRemoved)
{
    ASSERT_EQ(simulate("a", "1001").status, 0);
    ASSERT_EQ(simulate("a", "40").status, 0);
    EXPECT_EQ(namesIn("a"), everything);
    EXPECT_EQ(namesIn("a/panorama"), Names{"0.png"});
    EXPECT_EQ(panorama("a").size(), cv::Size(40, 20));
}

TEST_F(SimulateCommandTest, AWalkWithoutAPanoramaLeavesNothingOfAnEarlierOne)
{
    ASSERT_EQ(simulate("a", "1001").status, 0);
    ASSERT_EQ(simulate("a", "0").status, 0);
    EXPECT_EQ(namesIn("a"), (Names{"building.json", "scan.ply", "walk.sensors", "walk.trajectory"}));
}

TEST_F(SimulateCommandTest, NothingElseIsRemovedWithAnEarlierPanorama)
{
    ASSERT_EQ(simulate("a", "40").status, 0);
    std::string const before = read("a/walk.trajectory");
    write("a/panorama/notes.txt", "not to be lost");
    ToolRun const simulated = run({"simulate", file("a"), "--seconds", "0.1", "--panorama", "0"});
    EXPECT_EQ(simulated.status, 1);
    EXPECT_THAT(simulated.err, HasSubstr("notes.txt: is no .png tile"));
    EXPECT_TRUE(read("a/walk.trajectory") == before);
    EXPECT_EQ(namesIn("a"), everything);
    EXPECT_EQ(namesIn("a/panorama"), (Names{"0.png", "notes.txt"}));
}

TEST_F(SimulateCommandTest, ThePreviousOutputIsKeptOnFailure)
{
    ASSERT_EQ(simulate("a", "40").status, 0);
    std::vector<std::string> const files{"walk.trajectory", "panorama.json", "panorama/0.png"};
    std::vector<std::string> before;
    for (std::string const& name : files) {
        before.push_back(read("a/" + name));
    }
    write("a/panorama/notes.txt", "not to be lost");
    ToolRun const simulated = run({"simulate", file("a"), "--seconds", "0.1", "--panorama", "60"});
    EXPECT_EQ(simulated.status, 1);
    EXPECT_THAT(simulated.err, HasSubstr("notes.txt: is no .png tile"));
    EXPECT_EQ(lineCount(simulated.err), 1) << simulated.err;
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_TRUE(read("a/" + files[i]) == before[i]) << files[i];
    }
    EXPECT_EQ(namesIn("a"), everything);
    EXPECT_EQ(namesIn("a/panorama"), (Names{"0.png", "notes.txt"}));
}

TEST_F(SimulateCommandTest, WithoutColumnsThereIsNoPanorama)
{
    ToolRun const simulated = simulate("a", "0");
    ASSERT_EQ(simulated.status, 0) << simulated.err;
    EXPECT_EQ(simulated.out.find("panorama"), std::string::npos) << simulated.out;
    EXPECT_EQ(namesIn("a"), (Names{"building.json", "scan.ply", "walk.sensors", "walk.trajectory"}));
}

TEST_F(SimulateCommandTest, TheColumnsOfThePanoramaAreBounded)
{
    for (std::string const columns : {"-1", "8001", "2.5", "x"}) {
        ToolRun const simulated = simulate("a", columns);
        EXPECT_EQ(simulated.status, 1) << columns;
        EXPECT_EQ(lineCount(simulated.err), 1) << simulated.err;
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(SimulateCommandTest, ThePanoramaHasSeveralTilesByDefault)
{
    ASSERT_EQ(run({"simulate", file("a"), "--seconds", "0.05"}).status, 0);
    EXPECT_EQ(namesIn("a/panorama"), (Names{"0.png", "1.png", "2.png"}));
    EXPECT_EQ(panorama("a").size(), cv::Size(2400, 1200));
}
