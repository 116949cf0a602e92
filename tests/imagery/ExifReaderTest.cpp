/// @file
/// How the reader finds the EXIF block of a picture.

#include "tests/support/ExifTexts.h"
#include "tests/support/JpegBytes.h"
#include "tests/support/SharedData.h"

#include <roamscan/imagery/ExifReader.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace
{

using namespace oV::Roamscan;

using namespace std::string_literals;
using PanoramaImageData::ExifData;
using namespace support;

ExifData read(std::string const& picture)
{
    std::istringstream stream(picture);
    return readExifMetaData(stream);
}

/// The segment with a camera's block, and the beginning of the next segment.
std::string cameraSegment(std::string const& name = exifName())
{
    return segment(0xE1, name + cameraBlock(ByteOrder::Little)) + bytes({0xFF, 0xDB});
}

/// A picture with something before the block.
std::string pictureWith(std::string const& before)
{
    return startOfImage() + before + cameraSegment();
}

std::vector<int> const skippedMarkers{0xC0, 0xC2, 0xC4, 0xD0, 0xD1, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6,
                                      0xD7, 0xDA, 0xDB, 0xDD, 0xE0, 0xE2, 0xE3, 0xE4, 0xE5, 0xE6,
                                      0xE7, 0xE8, 0xE9, 0xEA, 0xEB, 0xEC, 0xED, 0xEE, 0xEF, 0xFE};

} // namespace

TEST(ExifReader, ADefaultResultIsEmptyAndNotValid)
{
    EXPECT_TRUE(isDefault(ExifData()));
}

TEST(ExifReader, FieldsAreInTheirOrder)
{
    auto const& [dateTime, manufacturer, model, valid] = ExifData{"a", "b", "c", true};
    EXPECT_EQ(std::tuple(dateTime, manufacturer, model, valid), std::tuple("a"s, "b"s, "c"s, true));
}

TEST(ExifReader, ABlockInTheFirstSegmentIsFound)
{
    EXPECT_TRUE(isCamera(read(pictureWith(""))));
}

TEST(ExifReader, BlockAfterApp0IsFound)
{
    // clang-format off
    std::string const picture =
        bytes({0xFF, 0xD8,
               0xFF, 0xE0, 0x00, 0x10, 'J', 'F', 'I', 'F', 0, 1, 2, 0, 0, 72, 0, 72, 0, 0,
               0xFF, 0xE1, 0x00, 0x39, 'E', 'x', 'i', 'f', 0, 0,
               'M', 'M', 0, 42, 0, 0, 0, 8,
               0, 2,
               0x01, 0x0F, 0, 2, 0, 0, 0, 5, 0, 0, 0, 38,
               0x01, 0x10, 0, 2, 0, 0, 0, 6, 0, 0, 0, 43,
               0, 0, 0, 0,
               'A', 'C', 'M', 'E', 0, 'X', '-', '1', '0', '0', 0,
               0xFF, 0xD9});
    // clang-format on
    ExifData const data = read(picture);
    EXPECT_EQ(data.manufacturer, "ACME\0"s);
    EXPECT_EQ(data.model, "X-100\0"s);
    EXPECT_EQ(data.dateTime, "");
    EXPECT_TRUE(data.valid);
}

TEST(ExifReader, SegmentsOfEveryKnownMarkerAreSkipped)
{
    for (int const marker : skippedMarkers) {
        EXPECT_TRUE(isCamera(read(pictureWith(segment(marker, ""))))) << marker;
        EXPECT_TRUE(isCamera(read(pictureWith(segment(marker, std::string(300, '\xE1')))))) << marker;
    }
}

TEST(ExifReader, AllKnownMarkersInARowAreSkipped)
{
    std::string all;
    for (int const marker : skippedMarkers) {
        all += segment(marker, std::string(static_cast<std::size_t>(marker), 'x'));
    }
    EXPECT_TRUE(isCamera(read(pictureWith(all))));
}

TEST(ExifReader, AnyOtherMarkerEndsTheSearch)
{
    for (int marker = 0; marker < 256; ++marker) {
        bool const isKnown =
            std::find(skippedMarkers.begin(), skippedMarkers.end(), marker) != skippedMarkers.end() ||
            marker == 0xD8 || marker == 0xD9 || marker == 0xE1;
        if (!isKnown) {
            EXPECT_TRUE(isDefault(read(pictureWith(segment(marker, ""))))) << marker;
            EXPECT_TRUE(isDefault(read(pictureWith(bytes({0xFF, marker}))))) << marker;
        }
    }
}

TEST(ExifReader, StartAndEndOfImageHaveNoLength)
{
    EXPECT_TRUE(isCamera(read(cameraSegment())));
    EXPECT_TRUE(isCamera(read(pictureWith(bytes({0xFF, 0xD8, 0xFF, 0xD8})))));
}

TEST(ExifReader, TheEndOfAnImageDoesNotEndTheSearch)
{
    EXPECT_TRUE(isCamera(read(pictureWith(bytes({0xFF, 0xD9})))));
    EXPECT_TRUE(isCamera(read(pictureWith(segment(0xDA, "scan") + bytes({0xFF, 0xD9})))));
}

TEST(ExifReader, ARestartMarkerHasALength)
{
    EXPECT_TRUE(isCamera(read(pictureWith(bytes({0xFF, 0xD3, 0x00, 0x04, 0xAB, 0xCD})))));
    EXPECT_TRUE(isDefault(read(pictureWith(bytes({0xFF, 0xD3})))));
}

TEST(ExifReader, TheFirstByteOfAMarkerMayBeAny)
{
    std::string picture = cameraSegment();
    for (int const first : {0x12, 0x00, 0xE1, 0xD8}) {
        EXPECT_TRUE(isCamera(read(picture.replace(0, 1, bytes({first}))))) << first;
        EXPECT_TRUE(isCamera(read(pictureWith(bytes({first, 0xE0, 0, 3, 'x'}))))) << first;
    }
}

TEST(ExifReader, FillBytesBeforeAMarkerAreNotSkipped)
{
    EXPECT_TRUE(isDefault(read(pictureWith(bytes({0xFF})))));
    EXPECT_TRUE(isDefault(read(pictureWith(bytes({0xFF, 0xFF})))));
}

TEST(ExifReader, AnApp1OfAnotherKindHidesALaterBlock)
{
    EXPECT_TRUE(isDefault(read(pictureWith(segment(0xE1, "http://ns.adobe.com/xap/1.0/ <x:xmpmeta/>")))));
    EXPECT_TRUE(isDefault(read(pictureWith(segment(0xE1, "")))));
}

TEST(ExifReader, NameOfTheBlockIsNotTested)
{
    EXPECT_TRUE(isCamera(read(startOfImage() + cameraSegment("XXXXXX"))));
    EXPECT_TRUE(isCamera(read(startOfImage() + cameraSegment(bytes({0, 1, 2, 3, 4, 5})))));
}

TEST(ExifReader, LengthsOfSkippedSegmentsBelowTwoAreRefused)
{
    EXPECT_TRUE(isCamera(read(pictureWith(bytes({0xFF, 0xE0, 0, 2})))));
    EXPECT_TRUE(isDefault(read(pictureWith(bytes({0xFF, 0xE0, 0, 1})))));
    EXPECT_TRUE(isDefault(read(pictureWith(bytes({0xFF, 0xE0, 0, 0})))));
}

TEST(ExifReader, ASegmentOfTheLargestLengthIsSkipped)
{
    EXPECT_TRUE(isCamera(read(pictureWith(segment(0xEF, std::string(65533, 'x'))))));
}

TEST(ExifReader, LengthsThatLeaveNoRoomForABlockAreRefused)
{
    std::string const block = exifName() + cameraBlock(ByteOrder::Little);
    for (std::size_t length = 0; length <= 7; ++length) {
        EXPECT_TRUE(isDefault(read(startOfImage() + support::app1(length, block)))) << length;
    }
}

TEST(ExifReader, BlockExtendsTwoBytesBeyondTheSegment)
{
    // The shortest valid block, with the directory on the header, has eight bytes.
    std::string const block = exifName() + bytes({0x00, 0x01, 0x00, 0x2A, 0x00, 0x00, 0x00, 0x00});
    EXPECT_TRUE(read(startOfImage() + support::app1(14, block)).valid);
    EXPECT_TRUE(isDefault(read(startOfImage() + support::app1(13, block))));

    constexpr std::uint32_t text = support::placeBehind(1);
    auto const textOfLength = [](std::uint32_t length) {
        std::string const tiff = support::tiffBlock(ByteOrder::Big, {{271, length, text}}, "abc");
        return read(startOfImage() + segment(0xE1, exifName() + tiff) + "defg").manufacturer;
    };
    EXPECT_EQ(textOfLength(5), "abcde");
    EXPECT_EQ(textOfLength(6), "");
}

TEST(ExifReader, ATextCanBeAsLongAsTheLargestBlock)
{
    std::string block = support::tiffBlock(ByteOrder::Little, {{272, 65529, 0}});
    block.resize(65529, 'x');
    EXPECT_EQ(read(support::jpegWithBlock(block)).model, block);
}

TEST(ExifReader, AFileThatEndsWithTheSegmentIsRead)
{
    std::string const picture = startOfImage() + segment(0xE1, exifName() + cameraBlock(ByteOrder::Big));
    EXPECT_TRUE(isCamera(read(picture)));
    EXPECT_TRUE(isCamera(read(picture + "x")));
}

TEST(ExifReader, TruncatedBlockIsPaddedWithZeros)
{
    std::string const picture = support::jpegWithBlock(cameraBlock(ByteOrder::Little));
    ExifData const withoutEnd = read(picture.substr(0, picture.size() - 4));
    EXPECT_EQ(withoutEnd.dateTime, "2008:07:31 16:49\0\0\0\0"s);
    EXPECT_EQ(withoutEnd.model, "X100-S\0"s);
    // The second and third of three entries are missing.
    std::size_t const secondEntry = 12 + 8 + 2 + 12;
    ExifData const withoutEntries = read(picture.substr(0, secondEntry));
    EXPECT_EQ(withoutEntries.manufacturer, "\0\0\0\0\0"s);
    EXPECT_EQ(withoutEntries.model, "");
    EXPECT_TRUE(withoutEntries.valid);
}

TEST(ExifReader, FileThatEndsBeforeTheDirectoryGivesNothing)
{
    std::string const picture = pictureWith(segment(0xE0, "JFIF"));
    std::size_t const firstEntry = 2 + 8 + 4 + 6 + 8 + 2;
    for (std::size_t size = 0; size < firstEntry - 1; ++size) {
        EXPECT_TRUE(isDefault(read(picture.substr(0, size)))) << size;
    }
    EXPECT_TRUE(read(picture.substr(0, firstEntry)).valid);
}

TEST(ExifReader, PngFileGivesNothing)
{
    EXPECT_TRUE(isDefault(read(bytes({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A}) + cameraSegment())));
}

TEST(ExifReader, EmptyStreamGivesNothing)
{
    EXPECT_TRUE(isDefault(read("")));
    EXPECT_TRUE(isDefault(read("\xFF")));
    EXPECT_TRUE(isDefault(read(startOfImage())));
}

TEST(ExifReader, RealPicturesAreRead)
{
    struct Picture
    {
        std::string file;
        ExifData wanted;
    };
    std::vector<Picture> const pictures{
        {"Fujifilm_FinePix_E500.jpg", {"2008:07:31 16:49:10\0"s, "FUJIFILM\0"s, "FinePix E500   \0"s, true}},
        {"Olympus_C8080WZ.jpg", {"2008:07:31 13:03:47\0"s, "OLYMPUS CORPORATION\0"s, "C8080WZ\0"s, true}},
        {"Sony_HDR-HC3.jpg", {"2008:07:31 17:20:21\0"s, "SONY\0"s, "HDR-HC3\0"s, true}},
        {"Canon_40D.jpg", {"2008:07:31 10:38:11\0"s, "Canon\0"s, "Canon EOS 40D\0"s, true}},
        {"Pentax_K10D.jpg",
         {"2008:07:31 15:56:49\0"s, "PENTAX Corporation \0"s, "PENTAX K10D        \0"s, true}},
        {"BlueSquare.jpg", {"2005:09:07 15:09:51\0"s, "", "", true}}};
    std::filesystem::path const folder = support::sharedData("exif");
    for (auto const& [file, wanted] : pictures) {
        if (!std::filesystem::exists(folder / file)) {
            GTEST_SKIP() << "missing: " << folder / file;
        }
        std::ifstream stream(folder / file, std::ios::binary);
        ExifData const data = readExifMetaData(stream);
        EXPECT_EQ(data.dateTime, wanted.dateTime) << file;
        EXPECT_EQ(data.manufacturer, wanted.manufacturer) << file;
        EXPECT_EQ(data.model, wanted.model) << file;
        EXPECT_TRUE(data.valid) << file;
    }
}
