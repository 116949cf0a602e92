#include "tests/support/TiledPictures.h"

#include <roamscan/imagery/LargeImageSerialization.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace
{

using namespace support;
using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;
using testing::ElementsAre;
using testing::IsEmpty;

// Layout of pictures in tiles, and round trips.
class LargeImageSerialization : public support::TiledPictures
{};

TEST_F(LargeImageSerialization, WritesTilesIntoTheFolderNamedAfterTheFile)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());

    EXPECT_THAT(folder.names(), ElementsAre("pano"));
    EXPECT_THAT(folder.names("pano"), ElementsAre("0.png", "1.png", "2.png"));
    EXPECT_TRUE(sameImage(readTile("0.png"), image(cv::Rect(0, 0, 1000, 3))));
    EXPECT_TRUE(sameImage(readTile("1.png"), image(cv::Rect(1000, 0, 1000, 3))));
    EXPECT_TRUE(sameImage(readTile("2.png"), image(cv::Rect(2000, 0, 500, 3))));
}

TEST_F(LargeImageSerialization, NumbersTilesInDecimalWithoutPadding)
{
    serializeImage(makeImage(1, 10001, CV_8UC1), place());
    auto names = folder.names("pano");
    EXPECT_EQ(names.size(), 11U);
    EXPECT_NE(std::find(names.begin(), names.end(), "10.png"), names.end());
    EXPECT_NE(std::find(names.begin(), names.end(), "9.png"), names.end());
}

TEST_F(LargeImageSerialization, FileItselfIsNeitherCreatedNorRead)
{
    folder.write("pano.png", "not a picture");
    cv::Mat const image = makeImage(2, 5);
    serializeImage(image, place());
    EXPECT_TRUE(sameImage(readImage(place()), image));
    EXPECT_EQ(folder.read("pano.png"), "not a picture");
}

TEST_F(LargeImageSerialization, TheExtensionChoosesTheFormat)
{
    serializeImage(makeImage(16, 16), place("pano.jpg"));
    EXPECT_THAT(folder.names("pano"), ElementsAre("0.jpg"));
    EXPECT_EQ(folder.read("pano/0.jpg").substr(0, 3), "\xFF\xD8\xFF");
    serializeImage(makeImage(16, 16), place("pano.png"));
    EXPECT_EQ(folder.read("pano/0.png").substr(1, 3), "PNG");
}

TEST_F(LargeImageSerialization, TakesTheNameOfTheFolderFromAllBeforeTheLastPoint)
{
    serializeImage(makeImage(1, 1), place("pano.left.png"));
    EXPECT_THAT(folder.names(), ElementsAre("pano.left"));
}

TEST_F(LargeImageSerialization, CreatesMissingDirectories)
{
    cv::Mat const image = makeImage(2, 3);
    serializeImage(image, place("a/b/pano.png"));
    EXPECT_TRUE(sameImage(readImage(place("a/b/pano.png")), image));
}

TEST_F(LargeImageSerialization, PathsMayContainNonAsciiCharactersAndSpaces)
{
    cv::Mat const image = makeImage(2, 1500);
    for (char const* name : {"my walk/the pano.png", "прогулка/панорама.png", "散歩/全景 ä.png"}) {
        serializeImage(image, place(name));
        EXPECT_TRUE(sameImage(readImage(place(name)), image)) << name;
    }
}

TEST_F(LargeImageSerialization, WritesAViewIntoALargerPicture)
{
    cv::Mat const whole = makeImage(10, 3000);
    cv::Mat const view = whole(cv::Rect(7, 2, 2100, 5));
    serializeImage(view, place());
    EXPECT_TRUE(sameImage(readImage(place()), view));
}

// Widths, depths and channels

class Widths : public LargeImageSerialization,
               public testing::WithParamInterface<std::tuple<int, std::size_t>>
{};

TEST_P(Widths, ComeBackFromAsManyTilesAsTheyNeed)
{
    auto const [width, tiles] = GetParam();
    cv::Mat const image = makeImage(3, width);
    serializeImage(image, place());
    EXPECT_EQ(folder.names("pano").size(), tiles);
    EXPECT_TRUE(sameImage(readImage(place()), image));
}

INSTANTIATE_TEST_SUITE_P(LargeImageSerialization,
                         Widths,
                         testing::Values(std::tuple(1, std::size_t{1}),
                                         std::tuple(999, std::size_t{1}),
                                         std::tuple(1000, std::size_t{1}),
                                         std::tuple(1001, std::size_t{2}),
                                         std::tuple(2500, std::size_t{3}),
                                         std::tuple(20001, std::size_t{21})));

TEST_F(LargeImageSerialization, APictureOneWiderThanATileGetsASecondTileOneColumnWide)
{
    serializeImage(makeImage(2, 1001), place());
    EXPECT_EQ(readTile("1.png").cols, 1);
}

TEST_F(LargeImageSerialization, APictureWithoutColumnsMakesTheDirectoryAndNoTile)
{
    serializeImage(cv::Mat(5, 0, CV_8UC3), place());
    EXPECT_THAT(folder.names(), ElementsAre("pano"));
    EXPECT_THAT(folder.names("pano"), IsEmpty());
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Did not find any sub images.", readName);
}

class PixelTypes : public LargeImageSerialization, public testing::WithParamInterface<std::tuple<int, int>>
{};

TEST_P(PixelTypes, SurviveInPng)
{
    auto const [depth, channels] = GetParam();
    cv::Mat const image = makeImage(4, 2100, CV_MAKETYPE(depth, channels));
    serializeImage(image, place());
    cv::Mat const back = readImage(place());
    EXPECT_EQ(back.depth(), depth);
    EXPECT_EQ(back.channels(), channels);
    EXPECT_TRUE(sameImage(back, image));
}

INSTANTIATE_TEST_SUITE_P(LargeImageSerialization,
                         PixelTypes,
                         testing::Combine(testing::Values(CV_8U, CV_16U), testing::Values(1, 3, 4)));

} // namespace
