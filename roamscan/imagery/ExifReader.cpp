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

// Thrown if an offset or a length is out of bounds. Caught by readExifMetaData().
struct ExifParsingError
{};

void require(bool holds)
{
    if (!holds) {
        throw ExifParsingError();
    }
}

// Reads the segments of a JPEG file.
class SegmentReader
{
public:
    explicit SegmentReader(std::istream& stream) : stream_(stream) {}

    [[nodiscard]] bool isAtEnd() const { return stream_.eof(); }

    // Returns the number of bytes read.
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

    // Seeking makes a file stream discard and refill its buffer, which takes most of the time. So bytes that
    // are already in the buffer are skipped without seeking. A stream that cannot seek is refused in any
    // case.
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
        InAnythingElse // must seek to show that it can
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

// RST and SOS are treated as segments with a length: an EXIF block comes before the first scan, and nothing
// after it is read.
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

// The segment after its name, and the two bytes after the segment: the length is reduced by the name only.
// Kept for compatibility, because values may extend that far. A truncated block is padded with zeros.
Bytes takeBlock(SegmentReader& reader)
{
    constexpr std::size_t nameSize = 6; // usually "Exif" and two zeros
    Bytes block(reader.readLength(nameSize + 1) - nameSize);
    reader.seekForward(nameSize);
    reader.read(block);
    return block;
}

// The block of the first APP1 segment of any kind; empty if there is none. Only the second byte of a marker
// is tested.
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

// Numbers and strings of a TIFF block, by their offset from its first byte. Offsets in the block have 32
// bits, so sums of them do not overflow 64 bits.
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
    bool isLittleEndian_; // false also if the block names no byte order
};

// The tags that are read. All others count as one tag.
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

// Offsets within an entry of a directory, and the entry's size.
constexpr std::uint64_t countPlace = 4;
constexpr std::uint64_t valuePlace = 8;
constexpr std::uint64_t entrySize = 12;

// Values of four bytes or fewer are stored in the entry itself, but are read from offset 8, where the first
// directory usually begins. Kept for compatibility.
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

// The value of an entry if it is a string, otherwise empty. Bounds are checked also for values that are not
// returned. Only the tag decides which type the value has; the entry's own type field is ignored.
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

// The strings of a directory: views into the block, of the first entry of each tag.
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

// Reads the first directory of the block only. Without entries if the block is not TIFF.
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
