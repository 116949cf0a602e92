#include "tools/io/OutputTiles.h"

#include "tests/support/Links.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/io/Pictures.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;
using testing::HasSubstr;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

cv::Mat picture(int columns, int shade)
{
    return {2, columns, CV_8UC3, cv::Scalar::all(shade)};
}

class OutputTilesTest : public ToolFixture
{
protected:
    void commitPicture(int columns, int shade, std::string const& name = "pano.png") const
    {
        OutputTiles output(file(name));
        output.write(picture(columns, shade));
        output.commit();
    }

    [[nodiscard]] cv::Mat readBack() const
    {
        auto const path = Bv_1_1::String::fromUtf16(file("pano.png").u16string());
        return LargeImageSerialization::readImage(Bv_1_1::File::fromPath(path));
    }

    void expectPicture(int columns, int shade) const
    {
        cv::Mat const read = readBack();
        ASSERT_EQ(read.size(), cv::Size(columns, 2));
        EXPECT_EQ(cv::norm(read, picture(columns, shade), cv::NORM_INF), 0.0);
    }

    [[nodiscard]] std::set<std::string> tiles() const
    {
        std::set<std::string> found;
        for (auto const& entry : fs::directory_iterator(file("pano"))) {
            found.insert(entry.path().filename().string());
        }
        return found;
    }
};

} // namespace

TEST_F(OutputTilesTest, TheTilesAppearOnlyWhenAllAreThere)
{
    OutputTiles output(file("pano.png"));
    output.write(picture(2001, 7));
    EXPECT_FALSE(fs::exists(file("pano")));
    EXPECT_EQ(names().size(), 1U);
    output.commit();
    EXPECT_EQ(names(), Names{"pano"});
    EXPECT_EQ(tiles(), (std::set<std::string>{"0.png", "1.png", "2.png"}));
    expectPicture(2001, 7);
}

TEST_F(OutputTilesTest, LeavesNothingWithoutCommit)
{
    {
        OutputTiles const output(file("pano.png"));
        output.write(picture(1001, 7));
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(OutputTilesTest, KeepsThePictureThatWasThereWithoutCommit)
{
    commitPicture(1001, 7);
    {
        OutputTiles const output(file("pano.png"));
        output.write(picture(5, 8));
    }
    EXPECT_EQ(names(), Names{"pano"});
    expectPicture(1001, 7);
}

TEST_F(OutputTilesTest, NoTileOfAPreviousWiderPictureRemains)
{
    commitPicture(2001, 7);
    commitPicture(1000, 8);
    EXPECT_EQ(names(), Names{"pano"});
    EXPECT_EQ(tiles(), std::set<std::string>{"0.png"});
    expectPicture(1000, 8);
}

TEST_F(OutputTilesTest, AnEmptyFolderIsReplaced)
{
    fs::create_directory(file("pano"));
    commitPicture(3, 7);
    EXPECT_EQ(names(), Names{"pano"});
    expectPicture(3, 7);
}

TEST_F(OutputTilesTest, ThePreviousPictureIsRestoredIfTheCommitFails)
{
    commitPicture(1001, 7);
    OutputTiles output(file("pano.png"));
    output.write(picture(5, 8));
    for (std::string const& name : names()) {
        if (name != "pano") {
            fs::remove_all(file(name)); // the temporary folder
        }
    }
    EXPECT_THAT(failureOf([&] { output.commit(); }), HasSubstr("pano: could not be put in place"));
    EXPECT_EQ(names(), Names{"pano"});
    expectPicture(1001, 7);
}

TEST_F(OutputTilesTest, ThePlaceIsOneToSerializeTo)
{
    OutputTiles output(file("pano.png"));
    LargeImageSerialization::serializeImage(picture(4, 9), placeOfTiles(output.picture()));
    output.commit();
    EXPECT_EQ(names(), Names{"pano"});
    expectPicture(4, 9);
}

TEST_F(OutputTilesTest, ATileThatCannotBeWrittenIsReported)
{
    {
        OutputTiles const output(file("pano.png"));
        cv::Mat const twoChannels(2, 2, CV_8UC2, cv::Scalar::all(0));
        EXPECT_THAT(failureOf([&] { output.write(twoChannels); }),
                    HasSubstr("pano: a tile could not be written"));
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(OutputTilesTest, RefusesAFileThatHasTheFoldersName)
{
    write("pano", "text");
    EXPECT_THAT(failureOf([&] { OutputTiles const output(file("pano.png")); }),
                HasSubstr("pano: is no folder"));
    EXPECT_EQ(names(), Names{"pano"});
    EXPECT_EQ(read("pano"), "text");
}

TEST_F(OutputTilesTest, RefusesAFolderThatHoldsAnythingElse)
{
    struct Case
    {
        std::string name;
        bool isFolder;
    };
    for (auto const& [name, isFolder] : {Case{"notes.txt", false},
                                         Case{"x.png", false},
                                         Case{"1a.png", false},
                                         Case{"0.jpg", false}, // of the picture pano.jpg
                                         Case{"0", false},
                                         Case{"1.png", true}})
    {
        SCOPED_TRACE(name);
        commitPicture(3, 7);
        fs::path const other = file("pano") / name;
        if (isFolder) {
            fs::create_directory(other);
        } else {
            write("pano/" + name, "text");
        }
        EXPECT_THAT(failureOf([&] { OutputTiles const output(file("pano.png")); }),
                    HasSubstr(name + ": is no .png tile, and its folder would be replaced"));
        EXPECT_EQ(names(), Names{"pano"});
        EXPECT_TRUE(fs::exists(other));
        EXPECT_TRUE(fs::exists(file("pano/0.png")));
        fs::remove(other);
    }
}

TEST_F(OutputTilesTest, AFileAddedToTheFolderInTheMeantimeIsKept)
{
    commitPicture(3, 7);
    {
        OutputTiles output(file("pano.png"));
        output.write(picture(3, 8));
        write("pano/notes.txt", "text");
        EXPECT_THAT(failureOf([&] { output.commit(); }), HasSubstr("notes.txt: is no .png tile"));
    }
    EXPECT_EQ(names(), Names{"pano"});
    EXPECT_EQ(tiles(), (std::set<std::string>{"0.png", "notes.txt"}));
    expectPicture(3, 7);
}

TEST_F(OutputTilesTest, RefusesANameWithoutTheExtensionOfAPictureFormat)
{
    for (std::string const name : {"pano", "pano.", ".png", "pano.nonsense", "."}) {
        EXPECT_THAT(failureOf([&] { OutputTiles const output(file(name)); }), HasSubstr(".png, for example"))
            << name;
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(OutputTilesTest, RefusesAMissingParentFolder)
{
    EXPECT_THAT(failureOf([&] { OutputTiles const output(file("no/such/pano.png")); }),
                HasSubstr(file("no/such/pano").string() + ": cannot be created"));
}

TEST_F(OutputTilesTest, OnlyTheLastExtensionIsCutOff)
{
    commitPicture(3, 7, "a.b.png");
    EXPECT_EQ(names(), Names{"a.b"});
}

TEST_F(OutputTilesTest, ALinkToAFolderOfTilesStaysALink)
{
    commitPicture(2001, 7);
    fs::rename(file("pano"), file("real"));
    if (!support::makeLink(file("real"), file("pano"))) {
        GTEST_SKIP() << "no links can be made";
    }
    commitPicture(3, 8);
    EXPECT_EQ(names(), (Names{"pano", "real"}));
    EXPECT_TRUE(fs::is_symlink(file("pano")));
    expectPicture(3, 8);
}

TEST_F(OutputTilesTest, NamesMayHoldAnyLetters)
{
    commitPicture(3, 7, "Größe 1.png");
    EXPECT_EQ(names(), Names{"Größe 1"});
}
