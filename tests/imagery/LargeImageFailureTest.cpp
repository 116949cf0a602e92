#include "tests/support/TiledPictures.h"

#include <roamscan/imagery/LargeImageSerialization.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace support;
using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;
using testing::ElementsAre;
using testing::IsEmpty;

// Exceptions, log messages and threads.
class LargeImageFailure : public support::TiledPictures
{};

TEST_F(LargeImageFailure, AnUnwritableFolderFailsAtTheFirstTile)
{
    folder.write("pano", "a file where the folder should be");
    expectInputOutput(failureOf([&] { serializeImage(makeImage(3, 2500), place()); }),
                      "Error writing image to " + tilePath("0.png").string(),
                      serializeName);
    EXPECT_EQ(folder.read("pano"), "a file where the folder should be");
}

TEST_F(LargeImageFailure, TilesBeforeTheFailedOneRemain)
{
    cv::Mat const image = makeImage(3, 2500);
    std::filesystem::create_directories(tilePath("1.png"));
    expectInputOutput(failureOf([&] { serializeImage(image, place()); }),
                      "Error writing image to " + tilePath("1.png").string(),
                      serializeName);
    EXPECT_THAT(folder.names("pano"), ElementsAre("0.png", "1.png"));
    EXPECT_TRUE(sameImage(readTile("0.png"), image(cv::Rect(0, 0, 1000, 3))));
}

TEST_F(LargeImageFailure, AFormatThatOpenCVDoesNotKnowFailsAndIsLogged)
{
    expectInputOutput(failureOf([&] { serializeImage(makeImage(3, 5), place("pano.nothing")); }),
                      "Error writing image to " + tilePath("0.nothing").string(),
                      serializeName);
    auto const log = Models::the().logMessages();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].severity, 1);
    EXPECT_THAT(narrow(log[0].message), testing::HasSubstr("could not find a writer"));
    EXPECT_EQ(narrow(log[0].file), "LargeImageSerialization");
    EXPECT_EQ(narrow(log[0].function), serializeName);
}

TEST_F(LargeImageFailure, APictureWithColumnsButNoRowsFails)
{
    expectInputOutput(failureOf([&] { serializeImage(cv::Mat(0, 5, CV_8UC3), place()); }),
                      "Error writing image to " + tilePath("0.png").string(),
                      serializeName);
}

TEST_F(LargeImageFailure, AFailureOfOpenCVInReadingIsLoggedAndNamesTheTile)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", "P5\n2000000 1\n255\n"); // wider than OpenCV takes
    expectInputOutput(failureOf([&] { (void)readImage(place()); }),
                      "Error reading image from " + tilePath("0.png").string(),
                      readName);
    auto const log = Models::the().logMessages();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].severity, 1);
    EXPECT_THAT(narrow(log[0].message), testing::HasSubstr("CV_IO_MAX_IMAGE_WIDTH"));
    EXPECT_EQ(narrow(log[0].file), "LargeImageSerialization");
    EXPECT_THAT(narrow(log[0].function), testing::StartsWith(readName));
}

TEST_F(LargeImageFailure, LogHoldsTheMessageOfTheTileAndAnErrorIsThrown)
{
    writeTile("0.png", makeImage(3, 10));
    writeTile("1.png", makeImage(4, 10));
    EXPECT_TRUE(failureOf([&] { (void)readImage(place()); }).isInternal);
    auto const log = Models::the().logMessages();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].severity, 1);
    EXPECT_EQ(narrow(log[0].message), "Img dimensions mismatch.");
    EXPECT_NE(narrow(log[0].function), readName);
}

TEST_F(LargeImageFailure, ReadAfterAFailureSucceeds)
{
    writeTile("0.png", makeImage(3, 10));
    writeTile("1.png", makeImage(4, 10));
    EXPECT_TRUE(failureOf([&] { (void)readImage(place()); }).isInternal);
    writeTile("1.png", makeImage(3, 10));
    EXPECT_EQ(readImage(place()).cols, 20);
}

TEST_F(LargeImageFailure, OtherExceptionsPassThrough)
{
    Models::the().setLogSink([](oV::LogMessage const&) { throw std::domain_error("from the sink"); });
    EXPECT_THROW(serializeImage(makeImage(3, 5), place("pano.nothing")), std::domain_error);
    writeTile("0.png", makeImage(3, 10));
    writeTile("1.png", makeImage(4, 10));
    EXPECT_THROW((void)readImage(place()), std::domain_error);
}

TEST_F(LargeImageFailure, OtherExceptionsFromInsideOpenCVAreNotCaught)
{
    writeTile("0.png", makeImage(3, 10));
    ScarceMemory const memory(0, [] { throw std::domain_error("from the allocator"); });
    EXPECT_THROW((void)readImage(place()), std::domain_error);
    float pixels[4] = {}; // of a depth that is to be converted for the file
    EXPECT_THROW(serializeImage(cv::Mat(2, 2, CV_32FC1, pixels), place()), std::domain_error);
    EXPECT_THAT(Models::the().logMessages(), IsEmpty());
}

TEST_F(LargeImageFailure, NullFileThrows)
{
    expectInternal(
        failureOf([] { serializeImage(makeImage(1, 1), nullptr); }), "No file given.", serializeName);
    expectInternal(failureOf([] { (void)readImage(nullptr); }), "No file given.", readName);
}

// Threads

TEST_F(LargeImageFailure, PicturesMayBeWrittenAndReadOnManyThreadsAtOnce)
{
    cv::Mat const image = makeImage(3, 6500);
    std::vector<std::thread> threads;
    std::vector<int> agreed(4, 0);
    for (std::size_t i = 0; i < agreed.size(); ++i) {
        threads.emplace_back([this, &image, &agreed, i] {
            auto const mine = place("pano" + std::to_string(i) + ".png");
            serializeImage(image, mine);
            agreed[i] = sameImage(readImage(mine), image) ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(agreed, ElementsAre(1, 1, 1, 1));
}

TEST_F(LargeImageFailure, ManyFailingTilesGiveOneException)
{
    for (int i = 0; i < 200; ++i) {
        writeTile(std::to_string(i) + ".png", makeImage(3 + i % 2, 10));
    }
    for (int round = 0; round < 10; ++round) {
        Models::the().clearLog();
        expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
        // Only tiles that were under way when the first one failed may fail, too.
        EXPECT_LT(Models::the().logMessages().size(), 100U);
    }
}

} // namespace
