#include "tests/tools/support/ToolFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <filesystem>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::lineCount;
using support::ToolFixture;
using support::ToolRun;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

cv::Mat makePicture(int rows, int columns, int type = CV_8UC3)
{
    cv::Mat picture(rows, columns, type);
    cv::RNG(7).fill(picture, cv::RNG::UNIFORM, 0, 65536);
    return picture;
}

class PanoramaCommandTest : public ToolFixture
{
protected:
    support::TestPath writePicture(std::string const& name, cv::Mat const& picture) const
    {
        EXPECT_TRUE(cv::imwrite(file(name).string(), picture));
        return file(name);
    }

    [[nodiscard]] cv::Mat picture(std::string const& name) const
    {
        return cv::imread(file(name).string(), cv::IMREAD_UNCHANGED);
    }

    [[nodiscard]] bool holds(std::string const& name, cv::Mat const& expected) const
    {
        cv::Mat const found = picture(name);
        return found.size() == expected.size() && found.type() == expected.type() &&
               cv::norm(found, expected, cv::NORM_INF) == 0.0;
    }

    void expectFailure(ToolRun const& result, std::string const& message) const
    {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("roamscan: "));
        EXPECT_THAT(result.err, HasSubstr(message));
        EXPECT_EQ(lineCount(result.err), 1) << result.err;
    }
};

} // namespace

TEST_F(PanoramaCommandTest, SplitMakesTilesOfAPicture)
{
    cv::Mat const whole = makePicture(4, 2500);
    auto const in = writePicture("in.png", whole);
    ToolRun const split = run({"panorama", "split", in, file("pano.png")});
    EXPECT_EQ(split.status, 0) << split.err;
    EXPECT_EQ(split.out, "2500 x 4 pixels in 3 tiles\n");
    EXPECT_THAT(names(), ElementsAre("in.png", "pano"));
    EXPECT_TRUE(holds("pano/0.png", whole(cv::Rect(0, 0, 1000, 4))));
    EXPECT_TRUE(holds("pano/2.png", whole(cv::Rect(2000, 0, 500, 4))));
}

TEST_F(PanoramaCommandTest, JoinMakesOnePictureOfTiles)
{
    cv::Mat const whole = makePicture(4, 2500, CV_16UC4);
    auto const in = writePicture("in.png", whole);
    std::filesystem::create_directory(file("a b"));
    ASSERT_EQ(run({"panorama", "split", in, file("a b/pano.png")}).status, 0);
    ToolRun const join = run({"panorama", "join", file("a b/pano.png"), file("out.png")});
    EXPECT_EQ(join.status, 0) << join.err;
    EXPECT_EQ(join.out, "2500 x 4 pixels in 3 tiles\n");
    EXPECT_TRUE(holds("out.png", whole));
}

TEST_F(PanoramaCommandTest, ANarrowPictureIsOneTile)
{
    auto const in = writePicture("in.png", makePicture(2, 7));
    EXPECT_EQ(run({"panorama", "split", in, file("pano.png")}).out, "7 x 2 pixels in 1 tile\n");
}

TEST_F(PanoramaCommandTest, SplitChangesTheFormatByTheExtension)
{
    auto const in = writePicture("in.png", makePicture(2, 1500));
    EXPECT_EQ(run({"panorama", "split", in, file("pano.jpg")}).status, 0);
    EXPECT_EQ(read("pano/1.jpg").substr(0, 2), "\xFF\xD8");
}

TEST_F(PanoramaCommandTest, SplitLeavesNoTilesOfAPreviousWiderPicture)
{
    cv::Mat const second = makePicture(2, 1200);
    auto const wide = writePicture("wide.png", makePicture(2, 3500));
    auto const narrow = writePicture("narrow.png", second);
    ASSERT_EQ(run({"panorama", "split", wide, file("pano.png")}).status, 0);
    ASSERT_EQ(run({"panorama", "split", narrow, file("pano.png")}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(file("pano/2.png")));
    EXPECT_EQ(run({"panorama", "join", file("pano.png"), file("out.png")}).status, 0);
    EXPECT_TRUE(holds("out.png", second));
}

TEST_F(PanoramaCommandTest, SplitOfAnInvalidPictureFailsAndKeepsThePreviousTiles)
{
    cv::Mat const whole = makePicture(2, 10);
    ASSERT_EQ(run({"panorama", "split", writePicture("in.png", whole), file("pano.png")}).status, 0);
    auto const text = write("text.png", "no picture");
    expectFailure(run({"panorama", "split", text, file("pano.png")}),
                  "text.png: is no picture in a readable format");
    EXPECT_TRUE(holds("pano/0.png", whole));
    EXPECT_THAT(names(), ElementsAre("in.png", "pano", "text.png"));
}

TEST_F(PanoramaCommandTest, SplitOfAMissingFileSaysSo)
{
    expectFailure(run({"panorama", "split", file("missing.png"), file("pano.png")}),
                  "missing.png: there is no such file");
}

TEST_F(PanoramaCommandTest, AnUnknownExtensionIsRefusedFirst)
{
    auto const in = writePicture("in.png", makePicture(2, 10));
    for (std::string const verb : {"split", "join"}) {
        expectFailure(run({"panorama", verb, in, file("pano.nothing")}),
                      ".nothing pictures cannot be written");
        expectFailure(run({"panorama", verb, in, file("pano")}), "has no extension for the picture's format");
    }
    EXPECT_THAT(names(), ElementsAre("in.png"));
}

TEST_F(PanoramaCommandTest, SplitToTheNameOfAFileFailsAndKeepsIt)
{
    auto const in = writePicture("in.png", makePicture(2, 10));
    write("pano", "a file");
    EXPECT_EQ(run({"panorama", "split", in, file("pano.png")}).status, 1);
    EXPECT_EQ(read("pano"), "a file");
    EXPECT_THAT(names(), ElementsAre("in.png", "pano"));
}

TEST_F(PanoramaCommandTest, ATileIsNeitherAnInputOfSplitNorAnOutputOfJoin)
{
    cv::Mat const whole = makePicture(2, 1500);
    ASSERT_EQ(run({"panorama", "split", writePicture("in.png", whole), file("pano.png")}).status, 0);
    expectFailure(run({"panorama", "split", file("pano/0.png"), file("pano.png")}),
                  "0.png: is in the folder of the tiles");
    expectFailure(run({"panorama", "join", file("pano.png"), file("pano/1.png")}),
                  "1.png: is in the folder of the tiles");
    EXPECT_EQ(run({"panorama", "join", file("pano.png"), file("pano.png")}).status, 0);
    EXPECT_TRUE(holds("pano.png", whole));
}

TEST_F(PanoramaCommandTest, JoinWithoutTilesNamesTheMissingOne)
{
    expectFailure(run({"panorama", "join", file("pano.png"), file("out.png")}),
                  "pano.png: has no tiles: there is no " + file("pano/0.png").string());
    EXPECT_THAT(names(), testing::IsEmpty());
}

TEST_F(PanoramaCommandTest, JoinNamesATileThatIsMissingInBetween)
{
    ASSERT_EQ(
        run({"panorama", "split", writePicture("in.png", makePicture(2, 3500)), file("pano.png")}).status, 0);
    std::filesystem::remove(file("pano/1.png"));
    expectFailure(run({"panorama", "join", file("pano.png"), file("out.png")}),
                  "pano.png: tile 1 is missing: there is " + file("pano/3.png").string() + ", but no " +
                      file("pano/1.png").string());
    std::filesystem::remove(file("pano/0.png"));
    expectFailure(run({"panorama", "join", file("pano.png"), file("out.png")}),
                  "pano.png: tile 0 is missing");
    EXPECT_THAT(names(), ElementsAre("in.png", "pano"));
}

TEST_F(PanoramaCommandTest, JoinNamesALastTileThatIsMissingByTheMetadata)
{
    ASSERT_EQ(run({"simulate", file("walk"), "--seconds", "0.05", "--panorama", "1100"}).status, 0);
    EXPECT_EQ(run({"panorama", "join", file("walk/panorama.png"), file("out.png")}).status, 0);
    std::filesystem::remove(file("walk/panorama/1.png"));
    expectFailure(
        run({"panorama", "join", file("walk/panorama.png"), file("out2.png")}),
        "panorama.png: tile 1 is missing: by its metadata this is a stitched panorama, which has about 1100 "
        "columns, but the 1 tile has only 1000");
    write("walk/panorama.json", "{}"); // without metadata, it may be another picture
    EXPECT_EQ(run({"panorama", "join", file("walk/panorama.png"), file("out2.png")}).status, 0);
}

TEST_F(PanoramaCommandTest, JoinReportsTilesWhoseWidthsDoNotFit)
{
    std::filesystem::create_directory(file("pano"));
    writePicture("pano/0.png", makePicture(2, 400));
    writePicture("pano/1.png", makePicture(2, 500));
    ToolRun const join = run({"panorama", "join", file("pano.png"), file("out.png")});
    EXPECT_EQ(join.status, 0);
    EXPECT_EQ(join.out, "900 x 2 pixels in 2 tiles\n");
    EXPECT_THAT(join.err, HasSubstr("pano.png: 2 tiles of 900 columns do not fit"));
    EXPECT_EQ(lineCount(join.err), 1) << join.err;
}

TEST_F(PanoramaCommandTest, SaysWhatAFileIs)
{
    auto const cloud = write("a.ply", "ply\nformat ascii 1.0\n");
    expectFailure(run({"panorama", "split", cloud, file("pano.png")}),
                  "a.ply: this is a PLY cloud; see roamscan place");
}

TEST_F(PanoramaCommandTest, JoinOfTilesThatDoNotFitFailsAndKeepsTheOutput)
{
    std::filesystem::create_directory(file("pano"));
    writePicture("pano/0.png", makePicture(2, 10));
    writePicture("pano/1.png", makePicture(3, 10));
    write("out.png", "before");
    expectFailure(run({"panorama", "join", file("pano.png"), file("out.png")}), "Img dimensions mismatch.");
    EXPECT_EQ(read("out.png"), "before");
    EXPECT_THAT(names(), ElementsAre("out.png", "pano"));
}

TEST_F(PanoramaCommandTest, JoinOfTilesThatAreNoPicturesFails)
{
    std::filesystem::create_directory(file("pano"));
    write("pano/0.png", "no picture");
    expectFailure(run({"panorama", "join", file("pano.png"), file("out.png")}),
                  "its tiles are no readable pictures");
}

TEST_F(PanoramaCommandTest, RequiresSplitOrJoin)
{
    EXPECT_EQ(run({"panorama"}).status, 1);
    EXPECT_EQ(run({"panorama", "fold", "a", "b"}).status, 1);
}
