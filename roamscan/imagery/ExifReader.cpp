#include <roamscan/imagery/ExifReader.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <istream>
#include <optional>
#include <span>
#include <streambuf>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

namespace oV::Roamscan
{

namespace
{

using Bytes = std::vector<unsigned char>;

// Something in the stream or the block is out of bounds. readExifMetaData() catches it.
struct ExifParsingError
{};

void require(bool holds)
{
    if (!holds) {
        throw ExifParsingError();
    }
}

// Takes a JPEG file apart into segments.
class SegmentReader
{
public:
    explicit SegmentReader(std::istream& stream) : stream_(stream) {}

    [[nodiscard]] bool isAtEnd() const { return stream_.eof(); }

    // How many bytes there were to fill `bytes` with.
    std::size_t read(std::span<unsigned char> bytes)
    {
        stream_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return static_cast<std::size_t>(stream_.gcount());
    }

    // The length of a segment, which counts its own two bytes.
    std::size_t readLength(std::size_t smallest)
    {
        std::array<unsigned char, 2> pair{};
        require(read(pair) == pair.size());
        std::size_t const length = std::size_t{pair[0]} << 8U | pair[1];
        require(length >= smallest);
        return length;
    }

    // A file's buffer drops what it holds when it is told to move, and reads it again; that costs more than
    // all the rest, so where the bytes are there already they are stepped over. A stream that cannot seek is
    // refused all the same, whatever its buffer holds.
    void seekForward(std::size_t count)
    {
        auto const distance = static_cast<std::streamsize>(count);
        if (isSeekableFile() && stream_.rdbuf()->in_avail() >= distance) {
            stream_.ignore(distance);
        } else {
            stream_.seekg(distance, std::ios::cur);
        }
        require(!stream_.fail());
    }

private:
    enum class Seeking
    {
        NotAskedYet,
        InFile,
        InAnythingElse // of which nobody knows whether it can, unless it does
    };

    bool isSeekableFile()
    {
        if (seeking_ == Seeking::NotAskedYet) {
            std::streambuf const& buffer = *stream_.rdbuf();
            bool const isFile = typeid(buffer) == typeid(std::filebuf);
            seeking_ = isFile && stream_.tellg() != std::istream::pos_type(-1) ? Seeking::InFile
                                                                               : Seeking::InAnythingElse;
        }
        return seeking_ == Seeking::InFile;
    }

    std::istream& stream_;
    Seeking seeking_ = Seeking::NotAskedYet;
};

bool standsAlone(unsigned char marker)
{
    return marker == 0xD8 || marker == 0xD9; // SOI, EOI
}

bool isApp1(unsigned char marker)
{
    return marker == 0xE1;
}

// RST and SOS are taken for segments with a length: an EXIF block comes before the first scan, and nothing
// behind it matters.
bool canBeSkipped(unsigned char marker)
{
    switch (marker) {
    case 0xC0: // SOF0
    case 0xC2: // SOF2
    case 0xC4: // DHT
    case 0xDA: // SOS
    case 0xDB: // DQT
    case 0xDD: // DRI
    case 0xFE: // COM
        return true;
    default:
        return (marker >= 0xD0 && marker <= 0xD7) || (marker >= 0xE0 && marker <= 0xEF); // RST, APP
    }
}

void skipSegment(SegmentReader& reader)
{
    constexpr std::size_t lengthSize = 2;
    reader.seekForward(reader.readLength(lengthSize) - lengthSize);
}

// What follows the name in the segment, and the two bytes behind the segment: only the name is taken off the
// length. Callers rely on what a value that reaches so far comes out as. Bytes that the stream does not have
// are zero.
Bytes takeBlock(SegmentReader& reader)
{
    constexpr std::size_t nameSize = 6; // "Exif" and two zeros, as a rule
    Bytes block(reader.readLength(nameSize + 1) - nameSize);
    reader.seekForward(nameSize);
    reader.read(block);
    return block;
}

// The block of the first APP1 segment, whatever it is; empty if there is none. Of the two bytes of a marker
// only the second one is looked at.
Bytes findBlock(std::istream& stream)
{
    SegmentReader reader(stream);
    while (!reader.isAtEnd()) {
        std::array<unsigned char, 2> marker{};
        if (reader.read(marker) < marker.size()) {
            break;
        }
        if (isApp1(marker[1])) {
            return takeBlock(reader);
        }
        if (canBeSkipped(marker[1])) {
            skipSegment(reader);
        } else if (!standsAlone(marker[1])) {
            break;
        }
    }
    return {};
}

// Numbers and texts of a TIFF block, by their offset from its first byte. Offsets of the block are 32 bits
// wide; 64 have room for what is added to them.
class TiffBlock
{
public:
    explicit TiffBlock(std::span<unsigned char const> bytes)
        : bytes_(bytes), isLittleEndian_(bytes.size() >= 2 && bytes[0] == 'I' && bytes[1] == 'I')
    {}

    [[nodiscard]] std::uint16_t read16(std::uint64_t offset) const
    {
        auto const b = slice(offset, 2);
        return static_cast<std::uint16_t>(isLittleEndian_ ? b[1] << 8U | b[0] : b[0] << 8U | b[1]);
    }

    [[nodiscard]] std::uint32_t read32(std::uint64_t offset) const
    {
        std::uint32_t const first = read16(offset);
        std::uint32_t const second = read16(offset + 2);
        return isLittleEndian_ ? second << 16U | first : first << 16U | second;
    }

    [[nodiscard]] std::span<unsigned char const> slice(std::uint64_t offset, std::uint64_t size) const
    {
        require(offset + size <= bytes_.size());
        return bytes_.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
    }

private:
    std::span<unsigned char const> bytes_;
    bool isLittleEndian_; // big-endian also where the block says neither
};

// The tags that are looked into. All others count as one and the same tag.
enum class Tag : std::uint16_t
{
    ImageDescription = 270,
    Make = 271,
    Model = 272,
    Orientation = 274,
    XResolution = 282,
    YResolution = 283,
    ResolutionUnit = 296,
    Software = 305,
    DateTime = 306,
    WhitePoint = 318,
    PrimaryChromaticities = 319,
    YCbCrCoefficients = 529,
    YCbCrPositioning = 531,
    ReferenceBlackWhite = 532,
    Copyright = 33432
};

// A place in an entry of a directory, and the entry's size.
constexpr std::uint64_t countPlace = 4;
constexpr std::uint64_t valuePlace = 8;
constexpr std::uint64_t entrySize = 12;

// Four bytes or less would fit into the entry itself, and are yet taken from where the first directory
// usually begins. Callers know short texts in this form.
constexpr std::uint32_t longestShortText = 4;
constexpr std::uint64_t placeOfShortTexts = 8;

std::string_view readText(TiffBlock const& block, std::uint64_t entry)
{
    std::uint32_t const count = block.read32(entry + countPlace);
    auto const text =
        block.slice(count > longestShortText ? block.read32(entry + valuePlace) : placeOfShortTexts, count);
    return {reinterpret_cast<char const*>(text.data()), text.size()};
}

void requireRationals(TiffBlock const& block, std::uint64_t entry, std::uint64_t count)
{
    constexpr std::uint64_t rationalSize = 8;
    static_cast<void>(block.slice(block.read32(entry + valuePlace), count * rationalSize));
}

// The value of an entry if it is a text, else an empty one. What no caller gets to see must still be sound.
// The tag alone says what the value is; the type that the entry names is not asked.
std::string_view readValue(TiffBlock const& block, std::uint64_t entry, Tag tag)
{
    switch (tag) {
    case Tag::ImageDescription:
    case Tag::Make:
    case Tag::Model:
    case Tag::Software:
    case Tag::DateTime:
    case Tag::Copyright:
        return readText(block, entry);
    case Tag::Orientation:
    case Tag::ResolutionUnit:
    case Tag::YCbCrPositioning:
        static_cast<void>(block.read16(entry + valuePlace));
        return {};
    case Tag::XResolution:
    case Tag::YResolution:
        requireRationals(block, entry, 1);
        return {};
    case Tag::WhitePoint:
        requireRationals(block, entry, 2);
        return {};
    case Tag::YCbCrCoefficients:
        requireRationals(block, entry, 3);
        return {};
    case Tag::PrimaryChromaticities:
    case Tag::ReferenceBlackWhite:
        requireRationals(block, entry, 6);
        return {};
    }
    return {};
}

// What is kept of a directory: the texts, in the block, of the first entry of each tag.
struct Directory
{
    std::optional<std::string_view> dateTime;
    std::optional<std::string_view> manufacturer;
    std::optional<std::string_view> model;
    bool hasEntries = false;
};

void addEntry(Directory& directory, Tag tag, std::string_view text)
{
    auto const keepFirst = [text](std::optional<std::string_view>& kept) {
        if (!kept) {
            kept = text;
        }
    };
    directory.hasEntries = true;
    if (tag == Tag::DateTime) {
        keepFirst(directory.dateTime);
    } else if (tag == Tag::Make) {
        keepFirst(directory.manufacturer);
    } else if (tag == Tag::Model) {
        keepFirst(directory.model);
    }
}

// The first directory of the block, and only that; without entries if the block is not of TIFF.
Directory readDirectory(TiffBlock const& block)
{
    constexpr std::uint16_t magic = 42;
    Directory directory;
    if (block.read16(2) != magic) {
        return directory;
    }
    std::uint64_t const start = block.read32(4);
    std::uint64_t const count = block.read16(start);
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint64_t const entry = start + 2 + i * entrySize;
        auto const tag = static_cast<Tag>(block.read16(entry));
        addEntry(directory, tag, readValue(block, entry, tag));
    }
    return directory;
}

PanoramaImageData::ExifData toExifData(Directory const& directory)
{
    return {std::string(directory.dateTime.value_or("")),
            std::string(directory.manufacturer.value_or("")),
            std::string(directory.model.value_or("")),
            true};
}

} // namespace

PanoramaImageData::ExifData readExifMetaData(std::istream& stream)
{
    try {
        Bytes const block = findBlock(stream);
        if (!block.empty()) {
            Directory const directory = readDirectory(TiffBlock(block));
            if (directory.hasEntries) {
                return toExifData(directory);
            }
        }
    } catch (ExifParsingError const&) {
        return {};
    }
    return {};
}

} // namespace oV::Roamscan
