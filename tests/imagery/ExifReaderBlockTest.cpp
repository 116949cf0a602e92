/// @file
/// How the reader interprets an EXIF block. Each block is put into a picture so that it is what the reader
/// takes, to the byte.

#include "tests/support/ExifTexts.h"
#include "tests/support/JpegBytes.h"

#include <roamscan/imagery/ExifReader.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace
{

using namespace oV::Roamscan;

using namespace std::string_literals;
using PanoramaImageData::ExifData;
using support::ByteOrder;
using support::bytes;
using support::directoryBytes;
using support::isDefault;
using support::placeBehind;
using support::textsOf;
using support::tiffBlock;
using support::tiffHeader;

constexpr auto little = ByteOrder::Little;
constexpr auto big = ByteOrder::Big;

constexpr std::uint16_t makeTag = 271;
constexpr std::uint16_t modelTag = 272;
constexpr std::uint16_t dateTimeTag = 306;
constexpr std::uint16_t unknownTag = 1000;

using Tags = std::vector<std::uint16_t>;
Tags const textTags{270, 271, 272, 305, 306, 33432};

ExifData readBlock(std::string const& block)
{
    std::istringstream stream(support::jpegWithBlock(block));
    return readExifMetaData(stream);
}

/// A block that ends with its only entry, with room before the directory for the value of the entry.
std::string endingWith(support::TiffEntry const& entry, std::size_t cut = 0)
{
    constexpr std::size_t directory = 70;
    std::string block = tiffHeader(little, directory);
    block.resize(directory, 'x');
    block += directoryBytes(little, {entry});
    return block.substr(0, block.size() - cut);
}

} // namespace

TEST(ExifReaderBlock, LittleEndianTextsAreRead)
{
    // clang-format off
    std::string const block =
        bytes({'I', 'I', 0x2A, 0x00, 0x08, 0x00, 0x00, 0x00,
               0x03, 0x00,
               0x0F, 0x01, 0x02, 0x00, 0x05, 0x00, 0x00, 0x00, 0x32, 0x00, 0x00, 0x00,
               0x10, 0x01, 0x02, 0x00, 0x07, 0x00, 0x00, 0x00, 0x37, 0x00, 0x00, 0x00,
               0x32, 0x01, 0x02, 0x00, 0x14, 0x00, 0x00, 0x00, 0x3E, 0x00, 0x00, 0x00,
               0x00, 0x00, 0x00, 0x00}) + "ACME\0X100-S\0"s + "2008:07:31 16:49:10\0"s;
    // clang-format on
    EXPECT_EQ(textsOf(readBlock(block)), std::tuple("2008:07:31 16:49:10\0"s, "ACME\0"s, "X100-S\0"s, true));
    EXPECT_EQ(block, support::cameraBlock(little));
}

TEST(ExifReaderBlock, BigEndianTextsAreRead)
{
    // clang-format off
    std::string const block =
        bytes({'M', 'M', 0x00, 0x2A, 0x00, 0x00, 0x00, 0x08,
               0x00, 0x03,
               0x01, 0x0F, 0x00, 0x02, 0x00, 0x00, 0x00, 0x05, 0x00, 0x00, 0x00, 0x32,
               0x01, 0x10, 0x00, 0x02, 0x00, 0x00, 0x00, 0x07, 0x00, 0x00, 0x00, 0x37,
               0x01, 0x32, 0x00, 0x02, 0x00, 0x00, 0x00, 0x14, 0x00, 0x00, 0x00, 0x3E,
               0x00, 0x00, 0x00, 0x00}) + "ACME\0X100-S\0"s + "2008:07:31 16:49:10\0"s;
    // clang-format on
    EXPECT_EQ(textsOf(readBlock(block)), std::tuple("2008:07:31 16:49:10\0"s, "ACME\0"s, "X100-S\0"s, true));
    EXPECT_EQ(block, support::cameraBlock(big));
}

TEST(ExifReaderBlock, DateTimeOfANormalFileHasTwentyBytes)
{
    EXPECT_EQ(readBlock(support::cameraBlock(big)).dateTime.size(), 20U);
}

TEST(ExifReaderBlock, AnUnknownByteOrderCountsAsBigEndian)
{
    std::string const wanted = "ACME\0"s;
    std::string block = support::cameraBlock(big);
    for (char const* const mark : {"MM", "MI", "IM", "XX", "ii", "\x01\x02"}) {
        EXPECT_EQ(readBlock(block.replace(0, 2, mark, 2)).manufacturer, wanted) << mark;
    }
    EXPECT_TRUE(isDefault(readBlock(block.replace(0, 2, "II"))));
    block = support::cameraBlock(little);
    for (char const* const mark : {"MM", "IM", "MI", "XX"}) {
        EXPECT_TRUE(isDefault(readBlock(block.replace(0, 2, mark)))) << mark;
    }
}

TEST(ExifReaderBlock, WrongMagicNumberIsNotATiffHeader)
{
    std::string const block = support::cameraBlock(little);
    EXPECT_TRUE(isDefault(readBlock(support::withU16(block, 2, 43))));
    EXPECT_TRUE(isDefault(readBlock(support::withU16(block, 2, 0x2A00))));
    EXPECT_TRUE(readBlock(support::withU16(block, 2, 42)).valid);
}

TEST(ExifReaderBlock, EightBytesAreEnoughForADirectory)
{
    // The directory lies on the header: one entry, with tag 42.
    std::string const block = bytes({0x00, 0x01, 0x00, 0x2A, 0x00, 0x00, 0x00, 0x00});
    EXPECT_EQ(textsOf(readBlock(block)), std::tuple(""s, ""s, ""s, true));
    for (std::size_t size = 1; size < block.size(); ++size) {
        EXPECT_TRUE(isDefault(readBlock(block.substr(0, size)))) << size;
    }
}

TEST(ExifReaderBlock, ShortBlocksAreRefused)
{
    std::string const block = tiffHeader(little);
    for (std::size_t size = 1; size <= block.size(); ++size) {
        EXPECT_TRUE(isDefault(readBlock(block.substr(0, size)))) << size;
    }
}

TEST(ExifReaderBlock, DirectoryOutsideTheBlockIsRefused)
{
    std::string const block = tiffBlock(little, {{unknownTag}});
    auto const size = static_cast<std::uint32_t>(block.size());
    EXPECT_TRUE(readBlock(block).valid);
    for (std::uint32_t const place : {size - 2, size - 1, size, 0x7FFFFFFFU, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        EXPECT_TRUE(isDefault(readBlock(support::withU32(block, 4, place)))) << place;
    }
}

TEST(ExifReaderBlock, ADirectoryWithoutEntriesIsNotValid)
{
    EXPECT_TRUE(isDefault(readBlock(tiffBlock(little, {}))));
    EXPECT_TRUE(isDefault(readBlock(tiffHeader(little) + bytes({0, 0}))));
}

TEST(ExifReaderBlock, SingleEntryOfAnUnknownTagIsValid)
{
    EXPECT_EQ(textsOf(readBlock(tiffBlock(little, {{unknownTag, 5, 8}}))), std::tuple(""s, ""s, ""s, true));
    EXPECT_EQ(textsOf(readBlock(tiffBlock(big, {{0xFFFF}, {0}, {unknownTag}}))),
              std::tuple(""s, ""s, ""s, true));
}

TEST(ExifReaderBlock, OfAnUnknownTagOnlyTheTagIsRead)
{
    EXPECT_TRUE(readBlock(endingWith({unknownTag, 0xFFFFFFFFU, 0xFFFFFFFFU})).valid);
    EXPECT_TRUE(readBlock(endingWith({unknownTag}, 10)).valid);
    EXPECT_TRUE(isDefault(readBlock(endingWith({unknownTag}, 11))));
}

TEST(ExifReaderBlock, OfThePointerToMoreDataOnlyTheTagIsRead)
{
    EXPECT_TRUE(readBlock(endingWith({34665, 1, 0xFFFFFFFFU}, 10)).valid);
    EXPECT_TRUE(isDefault(readBlock(endingWith({34665, 1, 0xFFFFFFFFU}, 11))));
    constexpr std::uint32_t behind = placeBehind(1);
    std::string const inner = directoryBytes(little, {{makeTag, 5, behind + 14}}) + "ACME\0"s;
    EXPECT_EQ(textsOf(readBlock(tiffBlock(little, {{34665, 1, behind}}, inner))),
              std::tuple(""s, ""s, ""s, true));
}

TEST(ExifReaderBlock, EntryCountBeyondTheBlockIsRefused)
{
    std::string const block = tiffHeader(little) + directoryBytes(little, {{makeTag, 5, 0}, {unknownTag}});
    EXPECT_EQ(readBlock(block).manufacturer.size(), 5U);
    EXPECT_TRUE(isDefault(readBlock(support::withU16(block, 8, 3))));
    EXPECT_TRUE(isDefault(readBlock(support::withU16(block, 8, 0xFFFF))));
    EXPECT_EQ(readBlock(support::withU16(block, 8, 1)).manufacturer.size(), 5U);
}

TEST(ExifReaderBlock, AsManyEntriesAsABlockCanHoldAreRead)
{
    constexpr std::size_t most = (65529 - 10) / 12;
    std::vector<support::TiffEntry> entries(most, {unknownTag});
    entries.back() = {makeTag, 65529, 0};
    std::string block = tiffHeader(little) + directoryBytes(little, entries);
    block.resize(65529, 'x');
    EXPECT_EQ(readBlock(block).manufacturer, block);
    EXPECT_TRUE(isDefault(readBlock(support::withU16(block, 8, most + 2))));
}

TEST(ExifReaderBlock, TheTypeOfAnEntryIsNotRead)
{
    for (std::uint16_t const type : Tags{0, 1, 3, 5, 99, 0xFFFF}) {
        EXPECT_EQ(readBlock(endingWith({makeTag, 6, 60, type})).manufacturer, "xxxxxx") << type;
    }
}

TEST(ExifReaderBlock, StringOfFiveBytesIsReadFromItsOffset)
{
    EXPECT_EQ(readBlock(tiffBlock(big, {{makeTag, 5, placeBehind(1)}}, "ACME\0"s)).manufacturer, "ACME\0"s);
}

TEST(ExifReaderBlock, StringOfFourBytesIsReadFromOffsetEight)
{
    // "IBM" in the entry itself; at offset 8 are the count of entries and the first tag.
    EXPECT_EQ(readBlock(tiffBlock(big, {{makeTag, 4, 0x49424D00}})).manufacturer,
              bytes({0x00, 0x01, 0x01, 0x0F}));
    EXPECT_EQ(readBlock(endingWith({makeTag, 4, 0xFFFFFFFFU})).manufacturer, "xxxx");
    EXPECT_EQ(readBlock(endingWith({modelTag, 3})).model, "xxx");
    EXPECT_EQ(readBlock(endingWith({dateTimeTag, 1})).dateTime, "x");
}

TEST(ExifReaderBlock, StringOfNoBytesIsEmptyAndUsed)
{
    EXPECT_EQ(textsOf(readBlock(endingWith({makeTag, 0, 0xFFFFFFFFU}))), std::tuple(""s, ""s, ""s, true));
}

TEST(ExifReaderBlock, ShortStringNeedsOnlyItsCountInsideTheBlock)
{
    EXPECT_EQ(readBlock(endingWith({makeTag, 4}, 4)).manufacturer, "xxxx");
    EXPECT_TRUE(isDefault(readBlock(endingWith({makeTag, 4}, 5))));
}

TEST(ExifReaderBlock, LongStringNeedsAnOffsetInsideTheBlock)
{
    for (std::uint16_t const tag : textTags) {
        EXPECT_TRUE(readBlock(endingWith({tag, 5, 8})).valid) << tag;
        EXPECT_TRUE(isDefault(readBlock(endingWith({tag, 5, 8}, 1)))) << tag;
    }
}

TEST(ExifReaderBlock, StringMayEndAtTheEndOfTheBlock)
{
    constexpr std::uint32_t size = placeBehind(1) + 6;
    for (std::uint16_t const tag : textTags) {
        auto const isSound = [tag](std::uint32_t count, std::uint32_t place) {
            return readBlock(tiffBlock(little, {{tag, count, place}}, "abcdef")).valid;
        };
        EXPECT_TRUE(isSound(6, size - 6)) << tag;
        EXPECT_TRUE(isSound(size, 0)) << tag;
        EXPECT_FALSE(isSound(7, size - 6)) << tag;
        EXPECT_FALSE(isSound(6, size - 5)) << tag;
        EXPECT_FALSE(isSound(size + 1, 0)) << tag;
        EXPECT_FALSE(isSound(5, size)) << tag;
    }
    EXPECT_EQ(readBlock(tiffBlock(little, {{modelTag, 6, size - 6}}, "abcdef")).model, "abcdef");
}

TEST(ExifReaderBlock, OffsetsOfStringsDoNotOverflow)
{
    EXPECT_TRUE(isDefault(readBlock(endingWith({makeTag, 5, 0xFFFFFFFFU}))));
    EXPECT_TRUE(isDefault(readBlock(endingWith({makeTag, 0x20, 0xFFFFFFF0U}))));
    EXPECT_TRUE(isDefault(readBlock(endingWith({makeTag, 0xFFFFFFFFU, 0x20}))));
    EXPECT_TRUE(isDefault(readBlock(endingWith({makeTag, 0xFFFFFFFFU, 0xFFFFFFFFU}))));
}

TEST(ExifReaderBlock, BytesOfAStringAreUnchanged)
{
    std::string const text = "a\0b\xFF\n\0\0"s;
    EXPECT_EQ(readBlock(tiffBlock(little, {{makeTag, 7, placeBehind(1)}}, text)).manufacturer, text);
    EXPECT_EQ(readBlock(tiffBlock(little, {{makeTag, 7, placeBehind(1)}}, "no end!")).manufacturer,
              "no end!");
}

TEST(ExifReaderBlock, ShortValueMustLieInsideTheBlock)
{
    for (std::uint16_t const tag : Tags{274, 296, 531}) {
        EXPECT_TRUE(readBlock(endingWith({tag, 1, 6}, 2)).valid) << tag;
        EXPECT_TRUE(isDefault(readBlock(endingWith({tag, 1, 6}, 3)))) << tag;
    }
}

TEST(ExifReaderBlock, RationalsMustLieInsideAndTheTagGivesTheirNumber)
{
    struct Rationals
    {
        std::uint16_t tag;
        std::uint32_t size;
    };
    for (auto const& [tag, size] : {Rationals{282, 8}, {283, 8}, {318, 16}, {319, 48}, {529, 24}, {532, 48}})
    {
        std::string const values(size, '\1');
        auto const isSound = [&, tag = tag](std::uint32_t place, std::uint32_t count = 0) {
            return readBlock(tiffBlock(little, {{tag, count, place}}, values)).valid;
        };
        EXPECT_TRUE(isSound(placeBehind(1))) << tag;
        EXPECT_TRUE(isSound(placeBehind(1), 1000)) << tag;
        EXPECT_TRUE(isSound(0)) << tag;
        EXPECT_FALSE(isSound(placeBehind(1) + 1)) << tag;
        EXPECT_FALSE(isSound(placeBehind(1) + size)) << tag;
        for (std::uint32_t const wrapping : {0xFFFFFFFFU, 0xFFFFFFFCU, 0xFFFFFFF8U, 0xFFFFFFD0U}) {
            EXPECT_FALSE(isSound(wrapping)) << tag << ' ' << wrapping;
        }
        EXPECT_TRUE(readBlock(endingWith({tag, 0, 0})).valid) << tag;
        EXPECT_TRUE(isDefault(readBlock(endingWith({tag, 0, 0}, 1)))) << tag;
    }
}

TEST(ExifReaderBlock, FirstEntryOfATagIsUsed)
{
    std::string const block = tiffBlock(little,
                                        {{makeTag, 5, placeBehind(6)},
                                         {modelTag, 5, placeBehind(6)},
                                         {dateTimeTag, 0, 0},
                                         {makeTag, 5, placeBehind(6) + 5},
                                         {modelTag, 6, placeBehind(6)},
                                         {dateTimeTag, 5, placeBehind(6)}},
                                        "firstother");
    EXPECT_EQ(textsOf(readBlock(block)), std::tuple(""s, "first"s, "first"s, true));
}

TEST(ExifReaderBlock, LaterEntryOfATagMustBeValid)
{
    std::vector<support::TiffEntry> entries{{makeTag, 5, 0}, {modelTag, 5, 0}, {makeTag, 5, 0}};
    EXPECT_EQ(readBlock(tiffBlock(little, entries)).manufacturer.size(), 5U);
    entries.back().value = 0xFFFFFFFFU;
    EXPECT_TRUE(isDefault(readBlock(tiffBlock(little, entries))));
}

TEST(ExifReaderBlock, InvalidEntryDiscardsTheEntriesBefore)
{
    for (std::uint16_t const tag : Tags{270, 282, 318, 532}) {
        std::vector<support::TiffEntry> const entries{{makeTag, 5, 0}, {tag, 5, 0xFFFFFFFFU}};
        EXPECT_TRUE(isDefault(readBlock(tiffBlock(little, entries)))) << tag;
    }
    EXPECT_TRUE(isDefault(readBlock(endingWith({274}, 3))));
}

TEST(ExifReaderBlock, TheNextDirectoryIsNotFollowed)
{
    constexpr std::uint32_t next = placeBehind(1);
    std::string block = tiffBlock(little, {{modelTag, 5, 0}}, directoryBytes(little, {{makeTag, 5, 0}}));
    block = support::withU32(block, next - 4, next);
    EXPECT_EQ(textsOf(readBlock(block)), std::tuple(""s, ""s, block.substr(0, 5), true));
    EXPECT_TRUE(readBlock(support::withU32(block, next - 4, 0xFFFFFFFFU)).valid);
    EXPECT_TRUE(readBlock(tiffHeader(little) + directoryBytes(little, {{modelTag, 5, 0}})).valid);
}
