/// @file
/// Which operations the reader calls on its stream, and how it handles streams that are not good, end early
/// or cannot seek.

#include "tests/support/ExifTexts.h"
#include "tests/support/JpegBytes.h"
#include "tests/support/TemporaryFolder.h"

#include <roamscan/imagery/ExifReader.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <ios>
#include <istream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <tuple>
#include <utility>

#if defined(__linux__)
#include <unistd.h>
#endif

namespace
{

using namespace oV::Roamscan;

using namespace std::string_literals;
using PanoramaImageData::ExifData;
using namespace support;

std::string littleEndianCameraSegment()
{
    return segment(0xE1, support::exifName() + cameraBlock(ByteOrder::Little));
}

/// The operations that a stream supports besides reading.
enum class Seeking
{
    Possible,
    Impossible,
    TellsPlaceOnly
};

/// Bytes without read-ahead. Counts the operations.
class ObservedBuffer : public std::streambuf
{
public:
    explicit ObservedBuffer(std::string content, Seeking seeking = Seeking::Possible)
        : content_(std::move(content)), seeking_(seeking)
    {}

    [[nodiscard]] std::size_t bytesRead() const { return bytesRead_; }
    [[nodiscard]] std::size_t furthest() const { return furthest_; }
    [[nodiscard]] std::size_t calls() const { return calls_; }

    void failFrom(std::size_t place) { failsFrom_ = place; }

protected:
    std::streamsize xsgetn(char* target, std::streamsize count) override
    {
        ++calls_;
        std::size_t const taken = content_.copy(target, static_cast<std::size_t>(count), place_);
        advance(taken);
        return static_cast<std::streamsize>(taken);
    }

    int_type underflow() override
    {
        ++calls_;
        return place_ < content_.size() ? traits_type::to_int_type(content_[place_]) : traits_type::eof();
    }

    int_type uflow() override
    {
        int_type const character = underflow();
        advance(place_ < content_.size() ? 1 : 0);
        return character;
    }

    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode /*which*/) override
    {
        ++calls_;
        bool const isHere = direction == std::ios::cur && offset == 0;
        auto const target = static_cast<off_type>(place_) + offset;
        if (seeking_ == Seeking::Impossible || (seeking_ == Seeking::TellsPlaceOnly && !isHere) ||
            direction != std::ios::cur || target > static_cast<off_type>(content_.size()))
        {
            return {off_type(-1)};
        }
        place_ = static_cast<std::size_t>(target);
        return {target};
    }

private:
    void advance(std::size_t count)
    {
        place_ += count;
        bytesRead_ += count;
        furthest_ = std::max(furthest_, place_);
        if (place_ > failsFrom_) {
            throw std::runtime_error("the disk is broken");
        }
    }

    std::string content_;
    Seeking seeking_;
    std::size_t place_ = 0;
    std::size_t bytesRead_ = 0;
    std::size_t furthest_ = 0;
    std::size_t calls_ = 0;
    std::size_t failsFrom_ = std::string::npos;
};

ExifData readObserved(ObservedBuffer& buffer)
{
    std::istream stream(&buffer);
    return readExifMetaData(stream);
}

ExifData readWith(std::string const& picture, Seeking seeking)
{
    ObservedBuffer buffer(picture, seeking);
    return readObserved(buffer);
}

ExifData readFromFile(std::string const& picture)
{
    support::TemporaryFolder const folder;
    std::ifstream stream(folder.write("picture.jpg", picture), std::ios::binary);
    return readExifMetaData(stream);
}

/// A file buffer that can read but not seek.
class UnseekableFileBuffer : public std::filebuf
{
protected:
    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode which) override
    {
        return offset == 0 ? std::filebuf::seekoff(offset, direction, which) : pos_type(off_type(-1));
    }
};

} // namespace

TEST(ExifReaderStream, NothingAfterTheBlockIsRead)
{
    std::string const before = startOfImage() + segment(0xE0, std::string(5000, 'x')) +
                               segment(0xFE, std::string(65533, 'x')) + littleEndianCameraSegment();
    ObservedBuffer buffer(before + std::string(8'000'000, 'x'));
    EXPECT_TRUE(isCamera(readObserved(buffer)));
    // Start; two skipped segments and the one that is taken, four bytes each; the block.
    EXPECT_EQ(buffer.bytesRead(), 2U + 3U * 4U + 82U + 2U);
    EXPECT_EQ(buffer.furthest(), before.size() + 2U);
    EXPECT_LE(buffer.calls(), 11U);
}

TEST(ExifReaderStream, AnotherKindOfApp1EndsTheReading)
{
    std::string const before = startOfImage() + segment(0xE1, "something else");
    ObservedBuffer buffer(before + littleEndianCameraSegment() + std::string(1000, 'x'));
    EXPECT_TRUE(isDefault(readObserved(buffer)));
    EXPECT_EQ(buffer.furthest(), before.size() + 2U);
}

TEST(ExifReaderStream, AnUnknownMarkerEndsTheReading)
{
    ObservedBuffer buffer(bytes({0x89, 'P', 'N', 'G'}) + std::string(1000, 'x'));
    EXPECT_TRUE(isDefault(readObserved(buffer)));
    EXPECT_EQ(buffer.bytesRead(), 2U);
}

TEST(ExifReaderStream, StreamAtItsEndIsNotRead)
{
    std::istringstream stream(startOfImage() + littleEndianCameraSegment());
    stream.setstate(std::ios::eofbit);
    EXPECT_TRUE(isDefault(readExifMetaData(stream)));
    EXPECT_EQ(stream.rdstate(), std::ios::eofbit);
    stream.clear();
    EXPECT_EQ(stream.tellg(), std::istringstream::pos_type(0));
}

TEST(ExifReaderStream, AStreamThatHasFailedGivesNothing)
{
    for (auto const state : {std::ios::failbit, std::ios::badbit}) {
        std::istringstream stream(startOfImage() + littleEndianCameraSegment());
        stream.setstate(state);
        EXPECT_TRUE(isDefault(readExifMetaData(stream)));
    }
    std::istream nowhere(nullptr);
    EXPECT_TRUE(isDefault(readExifMetaData(nowhere)));
}

TEST(ExifReaderStream, AStreamThatCannotSeekGivesNothing)
{
    EXPECT_TRUE(isCamera(readWith(startOfImage() + littleEndianCameraSegment(), Seeking::Possible)));
    EXPECT_TRUE(isDefault(readWith(startOfImage() + littleEndianCameraSegment(), Seeking::Impossible)));
}

TEST(ExifReaderStream, StreamThatOnlyTellsItsPositionGivesNothing)
{
    EXPECT_TRUE(isDefault(readWith(startOfImage() + littleEndianCameraSegment(), Seeking::TellsPlaceOnly)));
}

TEST(ExifReaderStream, EmptySegmentIsSeekedOver)
{
    std::string const picture = startOfImage() + segment(0xE0, "") + bytes({0xFF, 0x00});
    ObservedBuffer sound(picture);
    EXPECT_TRUE(isDefault(readObserved(sound)));
    EXPECT_EQ(sound.furthest(), picture.size());
    ObservedBuffer unseekable(picture, Seeking::Impossible);
    EXPECT_TRUE(isDefault(readObserved(unseekable)));
    EXPECT_EQ(unseekable.furthest(), picture.size() - 2);
}

TEST(ExifReaderStream, FileBufferOfAnotherCharacterTypeIsSeeked)
{
    support::TemporaryFolder const folder;
    auto const file = folder.write("picture.jpg", startOfImage() + littleEndianCameraSegment() + "behind");
    UnseekableFileBuffer buffer;
    ASSERT_NE(buffer.open(file, std::ios::in | std::ios::binary), nullptr);
    std::istream stream(&buffer);
    EXPECT_TRUE(isDefault(readExifMetaData(stream)));
}

TEST(ExifReaderStream, App1TooShortForABlockIsRefused)
{
    ObservedBuffer withRoom(startOfImage() + support::app1(7, "123456789"));
    EXPECT_TRUE(isDefault(readObserved(withRoom)));
    EXPECT_EQ(withRoom.furthest(), 2U + 4U + 7U);
    ObservedBuffer withoutRoom(startOfImage() + support::app1(6, "123456789"));
    EXPECT_TRUE(isDefault(readObserved(withoutRoom)));
    EXPECT_EQ(withoutRoom.furthest(), 2U + 4U);
}

TEST(ExifReaderStream, AStreamMayBeginInTheMiddleOfAnotherFile)
{
    std::istringstream stream("something else" + startOfImage() + segment(0xE0, "JFIF") +
                              littleEndianCameraSegment());
    stream.seekg(14);
    EXPECT_TRUE(isCamera(readExifMetaData(stream)));
}

TEST(ExifReaderStream, StreamBufferThatThrowsIsAFailedStream)
{
    std::string const picture = startOfImage() + littleEndianCameraSegment();
    for (std::size_t const place : {0U, 2U, 4U}) {
        ObservedBuffer buffer(picture);
        buffer.failFrom(place);
        EXPECT_TRUE(isDefault(readObserved(buffer))) << place;
    }
}

TEST(ExifReaderStream, ExceptionsEnabledOnTheStreamPassThrough)
{
    auto const all = std::ios::failbit | std::ios::badbit | std::ios::eofbit;
    std::istringstream sound(startOfImage() + littleEndianCameraSegment() + "xx");
    sound.exceptions(all);
    EXPECT_TRUE(isCamera(readExifMetaData(sound)));
    std::istringstream tooShort(startOfImage() + littleEndianCameraSegment() + "x");
    tooShort.exceptions(all);
    EXPECT_THROW((void)readExifMetaData(tooShort), std::ios::failure);
    std::istringstream broken(startOfImage() + support::app1(6, ""));
    broken.exceptions(all);
    EXPECT_TRUE(isDefault(readExifMetaData(broken)));
}

TEST(ExifReaderStream, AFileThatEndsWithASegmentThrowsWhereAStreamInMemoryDoes)
{
    support::TemporaryFolder const folder;
    for (std::string const& picture : {startOfImage() + segment(0xE0, "JFIF"),
                                       startOfImage() + segment(0xE0, ""),
                                       startOfImage() + support::app1(20, "123456")})
    {
        std::istringstream inMemory(picture);
        inMemory.exceptions(std::ios::failbit);
        EXPECT_THROW((void)readExifMetaData(inMemory), std::ios::failure);
        std::ifstream inFile(folder.write("picture.jpg", picture), std::ios::binary);
        inFile.exceptions(std::ios::failbit);
        EXPECT_THROW((void)readExifMetaData(inFile), std::ios::failure);
    }
}

TEST(ExifReaderStream, FilesAreReadAsStreamsInMemoryAre)
{
    EXPECT_TRUE(isCamera(readFromFile(startOfImage() + littleEndianCameraSegment())));
    EXPECT_TRUE(isDefault(readFromFile("")));
    // Below and above the size of a file buffer.
    for (std::size_t size = 8160; size < 8220; ++size) {
        std::string const before = startOfImage() + segment(0xE0, std::string(size, 'x'));
        EXPECT_TRUE(isCamera(readFromFile(before + littleEndianCameraSegment()))) << size;
        EXPECT_TRUE(isCamera(readFromFile(before + segment(0xE2, "") + littleEndianCameraSegment()))) << size;
    }
    std::string const far = segment(0xE0, std::string(65533, 'x')) + segment(0xE2, std::string(20000, 'x'));
    EXPECT_TRUE(isCamera(readFromFile(startOfImage() + far + littleEndianCameraSegment())));
}

TEST(ExifReaderStream, AFileMayEndInASegmentThatIsSkipped)
{
    EXPECT_TRUE(isDefault(readFromFile(startOfImage() + bytes({0xFF, 0xE0, 0x10, 0x00, 'x'}))));
    EXPECT_TRUE(isDefault(readFromFile(startOfImage() + bytes({0xFF, 0xE1, 0x10, 0x00, 'E'}))));
    EXPECT_TRUE(isDefault(readFromFile(startOfImage() + bytes({0xFF, 0xE1, 0x10}))));
}

#if defined(__linux__)
TEST(ExifReaderStream, APipeCannotSeekAndGivesNothing)
{
    std::string const picture = startOfImage() + littleEndianCameraSegment();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], picture.data(), picture.size()), static_cast<ssize_t>(picture.size()));
    close(ends[1]);
    std::ifstream stream("/dev/fd/" + std::to_string(ends[0]), std::ios::binary);
    ASSERT_TRUE(stream.is_open());
    EXPECT_EQ(stream.peek(), 0xFF);
    EXPECT_TRUE(isDefault(readExifMetaData(stream)));
    close(ends[0]);
}
#endif
