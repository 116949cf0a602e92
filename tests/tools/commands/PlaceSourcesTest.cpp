#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/PlaceFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using support::CloudTable;
using support::lastLine;
using support::lineCount;
using support::parseCloud;
using support::readCloud;
using support::ToolRun;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

class PlaceSourcesTest : public support::PlaceFixture
{
protected:
    /// The words of a call without a scan and a device.
    [[nodiscard]] Words call(Words const& more) const
    {
        Words words{"place", "--trajectory", file("a.trajectory"), "--to", "0"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    /// Places the scan of the rangefinder "top" without naming a device.
    [[nodiscard]] ToolRun placeTop(SensorData const& sensors, Words const& more = {}) const
    {
        writeSensorStream(sensors);
        Words words = call({"--sensors", file("a.sensors")});
        words.insert(words.end(), more.begin(), more.end());
        return run(words);
    }

    [[nodiscard]] ToolRun placePiped(std::string const& scan, Words const& more) const
    {
        Words words = call({"--from", "1", "--points", "-"});
        words.insert(words.end(), more.begin(), more.end());
        return runInPipe(words, scan);
    }
};

} // namespace

TEST_F(PlaceSourcesTest, TheDeviceOfARangefinderIsRecognised)
{
    writeSmallRecording();
    ToolRun const placing = placeTop(smallSensors(), {"--cloud", file("cloud.ply")});
    EXPECT_EQ(placing.status, 0) << placing.err;
    EXPECT_EQ(placing.err, "");
    EXPECT_THAT(placing.out, StartsWith("\"top\" is device 1 by its pose\n2 points in the scan\n"));
    EXPECT_EQ(readCloud(file("cloud.ply")).column("z"), (std::vector{2.0, 2.0}));
    EXPECT_THAT(placeTop(smallSensors(), {"--json"}).out, HasSubstr("\"from\": 1"));
}

TEST_F(PlaceSourcesTest, ARangefinderThatIsNotOneDeviceNeedsItsName)
{
    writeSmallRecording();
    auto const reason = [&](SensorData const& sensors, Words const& more = {}) {
        ToolRun const placing = placeTop(sensors, more);
        EXPECT_EQ(placing.status, 1);
        std::string const begin = "roamscan: " + file("a.sensors").string() + ": ";
        EXPECT_THAT(placing.err, StartsWith(begin));
        return placing.err.substr(begin.size());
    };
    SensorData sensors = smallSensors();
    EXPECT_EQ(reason(sensors, {"--rangefinder", "under"}),
              "it has no pose of \"under\", so give its device with --from\n");
    sensors.sensorPoses["top"].translation.z = 3.0F;
    EXPECT_EQ(reason(sensors),
              "the pose of \"top\" is the position of no device (devices with a position: 0, 1 and 2); give "
              "the device with --from, or set its position with roamscan mount\n");
    ASSERT_EQ(run({"mount", file("a.trajectory"), "--set", "3=0,0,2,1,0,0,0"}).status, 0);
    EXPECT_EQ(reason(smallSensors()),
              "the pose of \"top\" is the position of the devices 1 and 3; give one of them with --from\n");
    EXPECT_EQ(placeTop(smallSensors(), {"--from", "3"}).status, 0);
}

TEST_F(PlaceSourcesTest, ACloudNeedsTheNameOfItsDevice)
{
    writeSmallRecording();
    ToolRun const placing = run(call({"--points", file("scan.ply")}));
    EXPECT_EQ(placing.status, 1);
    EXPECT_EQ(placing.err,
              "roamscan: --from is required: a cloud does not say which device made it, 0 to 3 (see roamscan "
              "place --help)\n");
}

TEST_F(PlaceSourcesTest, EveryFormatGoesThroughAPipe)
{
    writeSmallRecording();
    for (std::string const format : {"ply", "pcd", "csv", "las"}) {
        std::string const name = "cloud." + format;
        ToolRun const placing = placePiped(read("scan.ply"), {"--cloud", "-", "--cloud-format", format});
        EXPECT_EQ(placing.status, 0) << placing.err;
        EXPECT_EQ(placing.out, "");
        EXPECT_EQ(lastLine(placing.err), "placed 1 of 5 points") << "not among the points";
        ASSERT_EQ(place({"--cloud", file(name)}).status, 0);
        EXPECT_EQ(placing.piped, read(name)) << format;

        // What was written is read from a pipe again.
        ToolRun const again = placePiped(placing.piped, {"--cloud", file("again.csv")});
        EXPECT_EQ(lastLine(again.out), "placed 1 of 1 points") << format << ": " << again.err;
        EXPECT_NEAR(readCloud(file("again.csv")).column("x")[0], 7.0, 1e-9) << format;
    }
}

TEST_F(PlaceSourcesTest, ATextWithoutAHeaderGoesThroughAPipe)
{
    writeSmallRecording();
    ToolRun const placing =
        placePiped("1 2 3 100.5 7\n1 2 3 100.25 8\n",
                   {"--columns", "x,y,z,time,label", "--cloud", "-", "--cloud-format", "csv"});
    EXPECT_EQ(placing.status, 0) << placing.err;
    EXPECT_EQ(placing.piped, "x,y,z,time,label\n4,2,5,100.5,7\n4,2,5,100.25,8\n");
}

TEST_F(PlaceSourcesTest, NothingIncompleteGetsIntoAPipe)
{
    writeSmallRecording();
    std::string const scan = read("scan.ply");
    ToolRun const cut =
        placePiped(scan.substr(0, scan.size() - 1), {"--cloud", "-", "--cloud-format", "ply"});
    EXPECT_EQ(cut.status, 1);
    EXPECT_THAT(cut.err, HasSubstr("cut off or damaged"));
    EXPECT_EQ(cut.piped, "");
}

TEST_F(PlaceSourcesTest, UnclearPipesAreRefused)
{
    writeSmallRecording();
    auto const reason = [&](Words const& words) {
        ToolRun const placing = runInPipe(words);
        EXPECT_EQ(placing.status, 1);
        EXPECT_EQ(lineCount(placing.err), 1) << placing.err;
        return placing.err;
    };
    EXPECT_THAT(reason(call({"--from", "1", "--points", file("scan.ply"), "--cloud", "-"})),
                HasSubstr("give --cloud-format ply, pcd, csv or las"));
    EXPECT_THAT(reason({"place", "--trajectory", "-", "--from", "1", "--to", "0", "--points", "-"}),
                HasSubstr("the trajectory and the scan cannot both be read from the standard input"));
    EXPECT_THAT(reason(call({"--from",
                             "1",
                             "--points",
                             file("scan.ply"),
                             "--cloud",
                             "-",
                             "--cloud-format",
                             "ply",
                             "--picture",
                             "-"})),
                HasSubstr("cannot both be written to the standard output"));
    EXPECT_NE(reason(call({"--from", "1", "--points", file("scan.ply"), "--cloud-format", "ply"})), "");
}

TEST_F(PlaceSourcesTest, TheNameNeedsNoEndingIfTheFormatIsGiven)
{
    writeSmallRecording();
    EXPECT_EQ(place({"--cloud", file("cloud"), "--cloud-format", "pcd"}).status, 0);
    EXPECT_THAT(read("cloud"), StartsWith("# .PCD"));
}
