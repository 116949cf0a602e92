#include "tests/support/Links.h"
#include "tests/support/TiledPictures.h"

#include <roamscan/imagery/LargeImageSerialization.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace
{

using namespace support;
using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;
using testing::IsEmpty;

// Reading folders with unusual contents.
class LargeImageFolder : public support::TiledPictures
{};

// A PNG file that consists of a header only: it declares a size but has no pixels.
std::string pngHeader(unsigned int width, unsigned int height)
{
    auto const bigEndian = [](unsigned int value) {
        return std::string{static_cast<char>(value >> 24U),
                           static_cast<char>(value >> 16U),
                           static_cast<char>(value >> 8U),
                           static_cast<char>(value)};
    };
    std::string const chunk =
        std::string("IHDR") + bigEndian(width) + bigEndian(height) + std::string("\x08\x02\x00\x00\x00", 5);
    unsigned int crc = 0xFFFFFFFFU;
    for (char const byte : chunk) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return std::string("\x89PNG\r\n\x1a\n", 8) + bigEndian(13) + chunk + bigEndian(~crc);
}

TEST_F(LargeImageFolder, RemainingTilesOfAWiderPictureExtendTheNextPicture)
{
    cv::Mat const first = makeImage(3, 2500);
    serializeImage(first, place());
    cv::Mat second(3, 1000, CV_8UC3, cv::Scalar(1, 2, 3));
    serializeImage(second, place());

    cv::Mat const back = readImage(place());
    ASSERT_EQ(back.cols, 2500);
    EXPECT_TRUE(sameImage(back(cv::Rect(0, 0, 1000, 3)), second));
    EXPECT_TRUE(sameImage(back(cv::Rect(1000, 0, 1500, 3)), first(cv::Rect(1000, 0, 1500, 3))));
}

TEST_F(LargeImageFolder, RemainingTilesOfAnotherHeightDoNotMatch)
{
    serializeImage(makeImage(3, 2500), place());
    serializeImage(makeImage(4, 1000), place());
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageFolder, RemainingTilesOfAnotherTypeDoNotMatch)
{
    serializeImage(makeImage(3, 2500, CV_8UC3), place());
    serializeImage(makeImage(3, 1000, CV_8UC1), place());
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img types mismatch.", readName);
}

TEST_F(LargeImageFolder, TilesThatDifferInBothReportTheDimensions)
{
    writeTile("0.png", makeImage(3, 10, CV_8UC3));
    writeTile("1.png", makeImage(4, 10, CV_8UC1));
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageFolder, AMissingTileEndsThePictureWithoutAFailure)
{
    cv::Mat const image = makeImage(3, 4500);
    serializeImage(image, place());
    std::filesystem::remove(tilePath("2.png"));
    EXPECT_TRUE(sameImage(readImage(place()), image(cv::Rect(0, 0, 2000, 3))));
}

TEST_F(LargeImageFolder, ATileThatIsAFolderEndsThePicture)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());
    std::filesystem::remove(tilePath("1.png"));
    std::filesystem::create_directory(tilePath("1.png"));
    EXPECT_TRUE(sameImage(readImage(place()), image(cv::Rect(0, 0, 1000, 3))));
}

#if !defined(_WIN32)
TEST_F(LargeImageFolder, TileThatIsAPipeEndsThePictureWithoutBlocking)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());
    std::filesystem::remove(tilePath("1.png"));
    ASSERT_EQ(mkfifo(tilePath("1.png").c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_TRUE(sameImage(readImage(place()), image(cv::Rect(0, 0, 1000, 3))));
}
#endif

TEST_F(LargeImageFolder, TilesMayBeLinks)
{
    cv::Mat const tile = makeImage(3, 1000);
    writeTile("any.png", tile);
    if (!support::makeLink(tilePath("any.png"), tilePath("0.png")) ||
        !support::makeLink(tilePath("any.png"), tilePath("1.png")))
    {
        GTEST_SKIP() << "no links can be made";
    }
    cv::Mat expected;
    cv::repeat(tile, 1, 2, expected);
    EXPECT_TRUE(sameImage(readImage(place()), expected));
}

TEST_F(LargeImageFolder, TilesMayHaveAnyWidth)
{
    writeTile("0.png", cv::Mat(2, 3, CV_8UC1, cv::Scalar(1)));
    writeTile("1.png", cv::Mat(2, 1700, CV_8UC1, cv::Scalar(2)));
    cv::Mat const back = readImage(place());
    ASSERT_EQ(back.cols, 1703);
    EXPECT_EQ(back.at<unsigned char>(1, 2), 1);
    EXPECT_EQ(back.at<unsigned char>(0, 3), 2);
    EXPECT_EQ(back.at<unsigned char>(1, 1702), 2);
}

TEST_F(LargeImageFolder, NarrowTilesAreJoinedSideBySide)
{
    // Some of them are together as wide as if all were full.
    for (std::vector<int> const& widths : {std::vector{1000, 999, 1000, 1000},
                                           std::vector{999, 1000, 1000, 1},
                                           std::vector{1000, 1, 1500},
                                           std::vector{500, 1000, 1500},
                                           std::vector{500, 1000, 1500, 1000},
                                           std::vector{1500, 500, 1000, 20},
                                           std::vector{1000, 1500, 1000, 20}})
    {
        cv::Mat expected;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            cv::Mat const tile = makeImage(3, widths[i]) + cv::Scalar::all(static_cast<double>(i));
            writeTile(std::to_string(i) + ".png", tile);
            if (expected.empty()) {
                expected = tile;
            } else {
                cv::hconcat(expected, tile, expected);
            }
        }
        EXPECT_TRUE(sameImage(readImage(place()), expected)) << testing::PrintToString(widths);
        std::filesystem::remove_all(folder.file("pano"));
    }
}

TEST_F(LargeImageFolder, NarrowTilesNeedNoMemoryForFullOnes)
{
    cv::Mat const tile = makeImage(50, 2);
    cv::Mat expected;
    cv::repeat(tile, 1, 40, expected);
    for (int i = 0; i < 40; ++i) {
        writeTile(std::to_string(i) + ".png", tile);
    }
    ScarceMemory const memory(expected.total() * expected.elemSize());
    EXPECT_TRUE(sameImage(readImage(place()), expected));
}

TEST_F(LargeImageFolder, TilesThatDoNotMatchAreReportedBeforeMemoryRunsOut)
{
    writeTile("0.png", makeImage(1, 2));
    writeTile("1.png", makeImage(50, 2));
    ScarceMemory const memory(300);
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageFolder, APictureThatIsTooLargeForTheMemoryFailsAsOpenCVDoes)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());
    ScarceMemory const memory(image.total() * image.elemSize() - 1);
    EXPECT_THROW((void)readImage(place()), cv::Exception);
    EXPECT_THAT(Models::the().logMessages(), IsEmpty());
}

TEST_F(LargeImageFolder, ReadingWithoutATileDoesNotFindAnySubImage)
{
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Did not find any sub images.", readName);
    EXPECT_THAT(folder.names(), IsEmpty()); // and creates nothing
    EXPECT_THAT(Models::the().logMessages(), IsEmpty());
}

TEST_F(LargeImageFolder, UndecodableTileAmongOthersDoesNotMatch)
{
    serializeImage(makeImage(3, 2500), place());
    folder.write("pano/1.png", "not a picture");
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageFolder, SingleUndecodableTileGivesAnEmptyPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", "not a picture");
    cv::Mat const back = readImage(place());
    EXPECT_EQ(back.cols, 0);
    EXPECT_EQ(back.rows, 0);
    EXPECT_EQ(back.type(), 0);
}

TEST_F(LargeImageFolder, OnlyUndecodableTilesGiveAnEmptyPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", "not a picture");
    folder.write("pano/1.png", "");
    EXPECT_TRUE(readImage(place()).empty());
}

TEST_F(LargeImageFolder, TruncatedTileIsUndecodable)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png",
                 "BM" + std::string("\0\0\0\0\0\0\0\0", 8) + // a bitmap's header only
                     std::string("\x36\0\0\0\x28\0\0\0\2\0\0\0\2\0\0\0\1\0\x18\0", 20) +
                     std::string(24, '\0'));
    cv::Mat const back = readImage(place());
    EXPECT_EQ(back.size(), cv::Size(0, 0));
    EXPECT_EQ(back.type(), 0);
    folder.write("pano/1.png", "not a picture");
    EXPECT_TRUE(readImage(place()).empty());
}

TEST_F(LargeImageFolder, TileWithAFalseSizeTakesNoMemoryAndGivesAnEmptyPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", pngHeader(30000, 30000)); // 2.7 GB of pixels that are not there
    EXPECT_TRUE(readImage(place()).empty());
}

} // namespace
