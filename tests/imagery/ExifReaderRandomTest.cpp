/// @file
/// The reader against a naive one that follows the format step by step, on damaged pictures.

#include "tests/support/ExifTexts.h"
#include "tests/support/JpegBytes.h"
#include "tests/support/TemporaryFolder.h"

#include <roamscan/imagery/ExifReader.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using PanoramaImageData::ExifData;
using support::ByteOrder;
using support::bytes;
using support::segment;
using support::textsOf;
using Random = std::mt19937_64;

struct Refused
{};

/// All values of a block's entries, by tag.
struct PlainEntry
{
    std::string text;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> rationals;
    std::uint64_t shortValue = 0;
};

class PlainBlock
{
public:
    explicit PlainBlock(std::string bytes) : bytes_(std::move(bytes)) {}

    std::uint64_t value(std::uint64_t place, int count) const
    {
        bool const isLittle = bytes_.substr(0, 2) == "II";
        std::uint64_t result = 0;
        for (int i = 0; i < count; ++i) {
            std::uint64_t const at = place + static_cast<std::uint64_t>(isLittle ? count - 1 - i : i);
            if (at >= bytes_.size()) {
                throw Refused();
            }
            result = result * 256 + static_cast<unsigned char>(bytes_[at]);
        }
        return result;
    }

    std::string text(std::uint64_t entry) const
    {
        std::uint64_t const count = value(entry + 4, 4);
        std::uint64_t const place = count > 4 ? value(entry + 8, 4) : 8;
        if (place > bytes_.size() || place + count > bytes_.size()) {
            throw Refused();
        }
        return bytes_.substr(place, count);
    }

    PlainEntry entry(std::uint64_t place, std::uint64_t tag) const
    {
        static std::map<std::uint64_t, std::uint64_t> const rationals{
            {282, 1}, {283, 1}, {318, 2}, {319, 6}, {529, 3}, {532, 6}};
        PlainEntry result;
        if (tag == 270 || tag == 271 || tag == 272 || tag == 305 || tag == 306 || tag == 33432) {
            result.text = text(place);
        } else if (tag == 274 || tag == 296 || tag == 531) {
            result.shortValue = value(place + 8, 2);
        } else if (rationals.contains(tag)) {
            std::uint64_t const first = value(place + 8, 4);
            for (std::uint64_t i = 0; i < rationals.at(tag); ++i) {
                result.rationals.emplace_back(value(first + 8 * i, 4), value(first + 8 * i + 4, 4));
            }
        }
        return result;
    }

    std::map<std::uint64_t, PlainEntry> entries() const
    {
        std::map<std::uint64_t, PlainEntry> result;
        if (value(2, 2) == 42) {
            std::uint64_t const start = value(4, 4);
            std::uint64_t const count = value(start, 2);
            for (std::uint64_t i = 0; i < count; ++i) {
                std::uint64_t const tag = value(start + 2 + 12 * i, 2);
                result.emplace(tag, entry(start + 2 + 12 * i, tag));
            }
        }
        return result;
    }

private:
    std::string bytes_;
};

/// The block of the first APP1 segment; none if the search ends before.
std::optional<std::string> plainBlock(std::string const& picture)
{
    std::string const skipped =
        bytes({0xC0, 0xC2, 0xC4, 0xD0, 0xD1, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6, 0xD7, 0xDA, 0xDB, 0xDD, 0xE0,
               0xE2, 0xE3, 0xE4, 0xE5, 0xE6, 0xE7, 0xE8, 0xE9, 0xEA, 0xEB, 0xEC, 0xED, 0xEE, 0xEF, 0xFE});
    auto const byteAt = [&](std::size_t place) { return static_cast<unsigned char>(picture.at(place)); };
    std::size_t place = 0;
    while (place + 2 <= picture.size()) {
        char const marker = picture[place + 1];
        place += 2;
        if (marker == '\xD8' || marker == '\xD9') {
            continue;
        }
        bool const isApp1 = marker == '\xE1';
        if ((!isApp1 && skipped.find(marker) == std::string::npos) || place + 2 > picture.size()) {
            return std::nullopt;
        }
        std::size_t const length = byteAt(place) * 256U + byteAt(place + 1);
        if (isApp1) {
            if (length < 7 || place + 8 > picture.size()) {
                return std::nullopt;
            }
            std::string block = picture.substr(place + 8, length - 6);
            block.resize(length - 6, '\0');
            return block;
        }
        if (length < 2) {
            return std::nullopt;
        }
        place += length;
    }
    return std::nullopt;
}

ExifData plainRead(std::string const& picture)
{
    auto const block = plainBlock(picture);
    if (!block) {
        return {};
    }
    try {
        auto entries = PlainBlock(*block).entries();
        if (!entries.empty()) {
            return {entries[306].text, entries[271].text, entries[272].text, true};
        }
    } catch (Refused const&) {
        return {};
    }
    return {};
}

std::uint64_t below(Random& random, std::uint64_t limit)
{
    return std::uniform_int_distribution<std::uint64_t>(0, limit - 1)(random);
}

support::TiffEntry randomEntry(Random& random)
{
    static std::vector<std::uint16_t> const tags{270, 271, 271, 272, 272, 274, 282, 283,   296,   305,
                                                 306, 306, 318, 319, 529, 531, 532, 33432, 34665, 7};
    std::uint16_t const tag = tags[below(random, tags.size())];
    return {tag,
            static_cast<std::uint32_t>(below(random, 12)),
            static_cast<std::uint32_t>(below(random, 100)),
            static_cast<std::uint16_t>(below(random, 13))};
}

/// A picture, mostly valid; `most` bytes in a segment.
std::string randomPicture(Random& random, std::size_t most)
{
    ByteOrder const order = below(random, 2) == 0 ? ByteOrder::Little : ByteOrder::Big;
    std::string picture = support::startOfImage();
    for (std::uint64_t i = below(random, 4); i > 0; --i) {
        int const marker = below(random, 2) == 0 ? 0xE0 : 0xDB;
        picture += segment(marker, std::string(below(random, most), 'x'));
    }
    std::vector<support::TiffEntry> entries(1 + below(random, 6));
    std::generate(entries.begin(), entries.end(), [&random] { return randomEntry(random); });
    picture += segment(0xE1, support::exifName() + tiffBlock(order, entries, std::string(80, 't')));
    return picture + "behind";
}

void damage(std::string& picture, Random& random)
{
    for (std::uint64_t i = below(random, 4); i > 0; --i) {
        static std::string const favourites = bytes({0, 1, 7, 8, 0x7F, 0xD8, 0xE0, 0xE1, 0xFF});
        char& changed = picture[below(random, picture.size())];
        changed = favourites[below(random, favourites.size())];
    }
    if (below(random, 4) == 0) {
        picture.resize(below(random, picture.size() + 1));
    }
}

} // namespace

TEST(ExifReaderRandom, AgreesWithANaiveReader)
{
    constexpr std::uint64_t seed = 20081;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    int valid = 0;
    for (int i = 0; i < 10'000; ++i) {
        std::string picture = randomPicture(random, 30);
        damage(picture, random);
        std::istringstream stream(picture);
        ExifData const data = readExifMetaData(stream);
        ASSERT_EQ(textsOf(data), textsOf(plainRead(picture))) << i;
        valid += data.valid ? 1 : 0;
    }
    EXPECT_GT(valid, 1'000);
    EXPECT_LT(valid, 9'000);
}

TEST(ExifReaderRandom, FilesAgreeWithANaiveReader)
{
    constexpr std::uint64_t seed = 20082;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    support::TemporaryFolder const folder;
    int valid = 0;
    for (int i = 0; i < 500; ++i) {
        std::string picture = randomPicture(random, 9000);
        damage(picture, random);
        std::ifstream stream(folder.write("picture.jpg", picture), std::ios::binary);
        ExifData const data = readExifMetaData(stream);
        ASSERT_EQ(textsOf(data), textsOf(plainRead(picture))) << i;
        valid += data.valid ? 1 : 0;
    }
    EXPECT_GT(valid, 50);
}
