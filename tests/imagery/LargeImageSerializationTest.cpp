#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/ov/InternalErrorException.h>
#include <roamscan/frame/ov/Models.h>
#include <roamscan/frame/ov/VisibleException.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <support/TemporaryFolder.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace
{

using Bv_1_1::File;
using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Models;
using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char const* serializeName = "oV::Roamscan::LargeImageSerialization::serializeImage";
constexpr char const* readName = "oV::Roamscan::LargeImageSerialization::readImage";

std::string narrow(String const& string)
{
    return string.stringAnsi();
}

// Pixels that say where they are, with noise, so that tiles in another order or shifted by a column show.
cv::Mat makeImage(int rows, int columns, int type = CV_8UC3)
{
    cv::Mat image(rows, columns, type);
    cv::RNG noise(20261121);
    noise.fill(image, cv::RNG::UNIFORM, 0, 65536);
    return image;
}

bool sameImage(cv::Mat const& a, cv::Mat const& b)
{
    if (a.size() != b.size() || a.type() != b.type()) {
        return false;
    }
    return a.empty() || cv::norm(a, b, cv::NORM_INF) == 0.0;
}

class LargeImageSerialization : public testing::Test
{
protected:
    LargeImageSerialization() { Models::the().clearLog(); }
    ~LargeImageSerialization() override
    {
        Models::the().setLogSink({});
        Models::the().clearLog();
    }

    [[nodiscard]] SmartPtr<File const> place(std::string const& name = "pano.png") const
    {
        return File::fromPath(String::fromUtf16(folder.file(name).u16string()));
    }

    [[nodiscard]] std::string tilePath(std::string const& name) const
    {
        return (folder.path() / "pano" / name).string();
    }

    [[nodiscard]] cv::Mat readTile(std::string const& name) const
    {
        return cv::imread(tilePath(name), cv::IMREAD_UNCHANGED);
    }

    void writeTile(std::string const& name, cv::Mat const& tile) const
    {
        std::filesystem::create_directory(folder.file("pano"));
        ASSERT_TRUE(cv::imwrite(tilePath(name), tile));
    }

    support::TemporaryFolder folder;
};

// What a call throws, kept to look at.
struct Failure
{
    bool isVisible = false;
    bool isInternal = false;
    int code = 0;
    std::string message;
    std::string function;
    std::string file;
};

template <typename Call>
Failure failureOf(Call const& call)
{
    try {
        call();
    } catch (oV::VisibleException const& failure) {
        return {true,
                false,
                failure.getCode(),
                narrow(failure.getDesc()),
                narrow(failure.getFunction()),
                narrow(failure.getFile())};
    } catch (oV::InternalErrorException const& failure) {
        return {false,
                true,
                0,
                narrow(failure.getDesc()),
                narrow(failure.getFunction()),
                narrow(failure.getFile())};
    }
    return {};
}

void expectInternal(Failure const& failure, std::string const& message, std::string const& function)
{
    EXPECT_TRUE(failure.isInternal);
    EXPECT_EQ(failure.message, message);
    EXPECT_EQ(failure.function, function);
    EXPECT_EQ(failure.file, "LargeImageSerialization");
}

void expectInputOutput(Failure const& failure, std::string const& message, std::string const& function)
{
    EXPECT_TRUE(failure.isVisible);
    EXPECT_EQ(failure.code, 18);
    EXPECT_EQ(failure.message, message);
    EXPECT_EQ(failure.function, function);
    EXPECT_EQ(failure.file, "LargeImageSerialization");
}

// A PNG file of nothing but a header, which tells a size without any pixels behind it.
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

[[noreturn]] void failAsOpenCV()
{
    CV_Error(cv::Error::StsNoMem, "scarce");
}

// While it lives, OpenCV has no memory for a picture of more bytes than these.
class ScarceMemory : public cv::MatAllocator
{
public:
    explicit ScarceMemory(std::size_t most, std::function<void()> fail = failAsOpenCV)
        : most_(most), fail_(std::move(fail))
    {
        cv::Mat::setDefaultAllocator(this);
    }
    ScarceMemory(ScarceMemory const&) = delete;
    ScarceMemory& operator=(ScarceMemory const&) = delete;
    ~ScarceMemory() override { cv::Mat::setDefaultAllocator(plain_); }

    cv::UMatData* allocate(int dimensions,
                           int const* sizes,
                           int type,
                           void* data,
                           std::size_t* steps,
                           cv::AccessFlag access,
                           cv::UMatUsageFlags usage) const override
    {
        auto size = static_cast<std::size_t>(CV_ELEM_SIZE(type));
        for (int i = 0; i < dimensions; ++i) {
            size *= static_cast<std::size_t>(sizes[i]);
        }
        if (size > most_) {
            fail_();
        }
        return plain_->allocate(dimensions, sizes, type, data, steps, access, usage);
    }

    bool allocate(cv::UMatData* data, cv::AccessFlag access, cv::UMatUsageFlags usage) const override
    {
        return plain_->allocate(data, access, usage);
    }

    void deallocate(cv::UMatData* data) const override { plain_->deallocate(data); }

private:
    std::size_t most_;
    std::function<void()> fail_;
    cv::MatAllocator* plain_ = cv::Mat::getDefaultAllocator();
};

// Layout

TEST_F(LargeImageSerialization, KeepsAPictureAsTilesInTheFolderNamedForTheFile)
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

TEST_F(LargeImageSerialization, TheFileItselfIsNeitherMadeNorRead)
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

TEST_F(LargeImageSerialization, MakesTheDirectoriesThatAreMissing)
{
    cv::Mat const image = makeImage(2, 3);
    serializeImage(image, place("a/b/pano.png"));
    EXPECT_TRUE(sameImage(readImage(place("a/b/pano.png")), image));
}

TEST_F(LargeImageSerialization, PlacesMayHaveNamesInAnyLanguageAndBlanks)
{
    cv::Mat const image = makeImage(2, 1500);
    for (char const* name : {"my walk/the pano.png", "прогулка/панорама.png", "散歩/全景 ä.png"}) {
        serializeImage(image, place(name));
        EXPECT_TRUE(sameImage(readImage(place(name)), image)) << name;
    }
}

TEST_F(LargeImageSerialization, KeepsAViewIntoALargerPicture)
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

// What else is in the folder

TEST_F(LargeImageSerialization, StaleHigherTilesMakeTheNextPictureWider)
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

TEST_F(LargeImageSerialization, StaleHigherTilesOfAnotherHeightDoNotMatch)
{
    serializeImage(makeImage(3, 2500), place());
    serializeImage(makeImage(4, 1000), place());
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageSerialization, StaleHigherTilesOfAnotherTypeDoNotMatch)
{
    serializeImage(makeImage(3, 2500, CV_8UC3), place());
    serializeImage(makeImage(3, 1000, CV_8UC1), place());
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img types mismatch.", readName);
}

TEST_F(LargeImageSerialization, TilesThatDifferInBothReportTheDimensions)
{
    writeTile("0.png", makeImage(3, 10, CV_8UC3));
    writeTile("1.png", makeImage(4, 10, CV_8UC1));
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageSerialization, AMissingTileEndsThePictureWithoutAFailure)
{
    cv::Mat const image = makeImage(3, 4500);
    serializeImage(image, place());
    std::filesystem::remove(tilePath("2.png"));
    EXPECT_TRUE(sameImage(readImage(place()), image(cv::Rect(0, 0, 2000, 3))));
}

TEST_F(LargeImageSerialization, ATileThatIsAFolderEndsThePicture)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());
    std::filesystem::remove(tilePath("1.png"));
    std::filesystem::create_directory(tilePath("1.png"));
    EXPECT_TRUE(sameImage(readImage(place()), image(cv::Rect(0, 0, 1000, 3))));
}

#if !defined(_WIN32)
TEST_F(LargeImageSerialization, ATileThatIsAPipeEndsThePictureAndIsNotWaitedFor)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());
    std::filesystem::remove(tilePath("1.png"));
    ASSERT_EQ(mkfifo(tilePath("1.png").c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_TRUE(sameImage(readImage(place()), image(cv::Rect(0, 0, 1000, 3))));
}
#endif

TEST_F(LargeImageSerialization, TilesMayBeLinks)
{
    cv::Mat const tile = makeImage(3, 1000);
    writeTile("any.png", tile);
    std::filesystem::create_symlink(tilePath("any.png"), tilePath("0.png"));
    std::filesystem::create_symlink(tilePath("any.png"), tilePath("1.png"));
    cv::Mat expected;
    cv::repeat(tile, 1, 2, expected);
    EXPECT_TRUE(sameImage(readImage(place()), expected));
}

TEST_F(LargeImageSerialization, TilesMayHaveAnyWidth)
{
    writeTile("0.png", cv::Mat(2, 3, CV_8UC1, cv::Scalar(1)));
    writeTile("1.png", cv::Mat(2, 1700, CV_8UC1, cv::Scalar(2)));
    cv::Mat const back = readImage(place());
    ASSERT_EQ(back.cols, 1703);
    EXPECT_EQ(back.at<unsigned char>(1, 2), 1);
    EXPECT_EQ(back.at<unsigned char>(0, 3), 2);
    EXPECT_EQ(back.at<unsigned char>(1, 1702), 2);
}

TEST_F(LargeImageSerialization, TilesThatAreNotFullArePutSideBySideAllTheSame)
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

TEST_F(LargeImageSerialization, NarrowTilesNeedNoMemoryForFullOnes)
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

TEST_F(LargeImageSerialization, TilesThatDoNotMatchSaySoAlsoWhereFullOnesWouldNeedTooMuchMemory)
{
    writeTile("0.png", makeImage(1, 2));
    writeTile("1.png", makeImage(50, 2));
    ScarceMemory const memory(300);
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageSerialization, APictureThatIsTooLargeForTheMemoryFailsAsOpenCVDoes)
{
    cv::Mat const image = makeImage(3, 2500);
    serializeImage(image, place());
    ScarceMemory const memory(image.total() * image.elemSize() - 1);
    EXPECT_THROW((void)readImage(place()), cv::Exception);
    EXPECT_THAT(Models::the().logMessages(), IsEmpty());
}

TEST_F(LargeImageSerialization, ReadingWithoutATileDoesNotFindAnySubImage)
{
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Did not find any sub images.", readName);
    EXPECT_THAT(folder.names(), IsEmpty()); // and makes nothing
    EXPECT_THAT(Models::the().logMessages(), IsEmpty());
}

TEST_F(LargeImageSerialization, AnUndecodableTileBesideGoodOnesDoesNotMatch)
{
    serializeImage(makeImage(3, 2500), place());
    folder.write("pano/1.png", "not a picture");
    expectInternal(failureOf([&] { (void)readImage(place()); }), "Img dimensions mismatch.", readName);
}

TEST_F(LargeImageSerialization, AnUndecodableTileAloneGivesAnEmptyPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", "not a picture");
    cv::Mat const back = readImage(place());
    EXPECT_EQ(back.cols, 0);
    EXPECT_EQ(back.rows, 0);
    EXPECT_EQ(back.type(), 0);
}

TEST_F(LargeImageSerialization, UndecodableTilesAloneGiveAnEmptyPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", "not a picture");
    folder.write("pano/1.png", "");
    EXPECT_TRUE(readImage(place()).empty());
}

TEST_F(LargeImageSerialization, APictureThatBreaksOffIsAsUndecodableAsWhatIsNoPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png",
                 "BM" + std::string("\0\0\0\0\0\0\0\0", 8) + // a bitmap's header alone
                     std::string("\x36\0\0\0\x28\0\0\0\2\0\0\0\2\0\0\0\1\0\x18\0", 20) +
                     std::string(24, '\0'));
    cv::Mat const back = readImage(place());
    EXPECT_EQ(back.size(), cv::Size(0, 0));
    EXPECT_EQ(back.type(), 0);
    folder.write("pano/1.png", "not a picture");
    EXPECT_TRUE(readImage(place()).empty());
}

TEST_F(LargeImageSerialization, ATileThatLiesAboutItsSizeCostsNothingAndGivesAnEmptyPicture)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", pngHeader(30000, 30000)); // 2.7 GB of pixels that are not there
    EXPECT_TRUE(readImage(place()).empty());
}

// Failures of OpenCV

TEST_F(LargeImageSerialization, AnUnwritableFolderFailsAtTheFirstTile)
{
    folder.write("pano", "a file where the folder should be");
    expectInputOutput(failureOf([&] { serializeImage(makeImage(3, 2500), place()); }),
                      "Error writing image to " + tilePath("0.png"),
                      serializeName);
    EXPECT_EQ(folder.read("pano"), "a file where the folder should be");
}

TEST_F(LargeImageSerialization, TilesBeforeTheOneThatFailedStay)
{
    cv::Mat const image = makeImage(3, 2500);
    std::filesystem::create_directories(tilePath("1.png"));
    expectInputOutput(failureOf([&] { serializeImage(image, place()); }),
                      "Error writing image to " + tilePath("1.png"),
                      serializeName);
    EXPECT_THAT(folder.names("pano"), ElementsAre("0.png", "1.png"));
    EXPECT_TRUE(sameImage(readTile("0.png"), image(cv::Rect(0, 0, 1000, 3))));
}

TEST_F(LargeImageSerialization, AFormatThatOpenCVDoesNotKnowFailsAndIsLogged)
{
    expectInputOutput(failureOf([&] { serializeImage(makeImage(3, 5), place("pano.nothing")); }),
                      "Error writing image to " + tilePath("0.nothing"),
                      serializeName);
    auto const log = Models::the().logMessages();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].severity, 1);
    EXPECT_THAT(narrow(log[0].message), testing::HasSubstr("could not find a writer"));
    EXPECT_EQ(narrow(log[0].file), "LargeImageSerialization");
    EXPECT_EQ(narrow(log[0].function), serializeName);
}

TEST_F(LargeImageSerialization, APictureWithColumnsButNoRowsFails)
{
    expectInputOutput(failureOf([&] { serializeImage(cv::Mat(0, 5, CV_8UC3), place()); }),
                      "Error writing image to " + tilePath("0.png"),
                      serializeName);
}

TEST_F(LargeImageSerialization, AFailureOfOpenCVInReadingIsLoggedAndNamesTheTile)
{
    std::filesystem::create_directory(folder.file("pano"));
    folder.write("pano/0.png", "P5\n2000000 1\n255\n"); // wider than OpenCV takes
    expectInputOutput(failureOf([&] { (void)readImage(place()); }),
                      "Error reading image from " + tilePath("0.png"),
                      readName);
    auto const log = Models::the().logMessages();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].severity, 1);
    EXPECT_THAT(narrow(log[0].message), testing::HasSubstr("CV_IO_MAX_IMAGE_WIDTH"));
    EXPECT_EQ(narrow(log[0].file), "LargeImageSerialization");
    EXPECT_THAT(narrow(log[0].function), testing::StartsWith(readName));
}

TEST_F(LargeImageSerialization, TheLogHoldsWhatTheTileSaidAndTheFailureIsThrownAnew)
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

TEST_F(LargeImageSerialization, AfterAFailureTheNextReadStartsAfresh)
{
    writeTile("0.png", makeImage(3, 10));
    writeTile("1.png", makeImage(4, 10));
    EXPECT_TRUE(failureOf([&] { (void)readImage(place()); }).isInternal);
    writeTile("1.png", makeImage(3, 10));
    EXPECT_EQ(readImage(place()).cols, 20);
}

TEST_F(LargeImageSerialization, AnyOtherExceptionLeavesTheFunctionsAsItIs)
{
    Models::the().setLogSink([](oV::LogMessage const&) { throw std::domain_error("from the sink"); });
    EXPECT_THROW(serializeImage(makeImage(3, 5), place("pano.nothing")), std::domain_error);
    writeTile("0.png", makeImage(3, 10));
    writeTile("1.png", makeImage(4, 10));
    EXPECT_THROW((void)readImage(place()), std::domain_error);
}

TEST_F(LargeImageSerialization, OtherExceptionsFromInsideOpenCVAreNotCaught)
{
    writeTile("0.png", makeImage(3, 10));
    ScarceMemory const memory(0, [] { throw std::domain_error("from the allocator"); });
    EXPECT_THROW((void)readImage(place()), std::domain_error);
    float pixels[4] = {}; // of a depth that is to be converted for the file
    EXPECT_THROW(serializeImage(cv::Mat(2, 2, CV_32FC1, pixels), place()), std::domain_error);
    EXPECT_THAT(Models::the().logMessages(), IsEmpty());
}

TEST_F(LargeImageSerialization, NoFileIsABrokenContract)
{
    expectInternal(
        failureOf([] { serializeImage(makeImage(1, 1), nullptr); }), "No file given.", serializeName);
    expectInternal(failureOf([] { (void)readImage(nullptr); }), "No file given.", readName);
}

// Threads

TEST_F(LargeImageSerialization, PicturesMayBeWrittenAndReadOnManyThreadsAtOnce)
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

TEST_F(LargeImageSerialization, ManyFailingTilesGiveOneFailure)
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
