/// @file
/// The tests that are the same for both stream formats.

#include "tests/support/SensorStreams.h"
#include "tests/support/StoreStreams.h"
#include "tests/support/TrajectoryStreams.h"

#include <roamscan/frame/values/Endianness.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>

namespace
{

using oV::Endianness;
using namespace support;

constexpr std::ios::iostate notGood[] = {std::ios::eofbit, std::ios::failbit, std::ios::badbit};

template <typename Format>
class StoreStream : public testing::Test
{
protected:
    using Store = typename Format::Store;

    std::string const smallStream = Format::smallStream();

    static std::istringstream streamWithLength(std::uint64_t length)
    {
        return std::istringstream(Format::smallStream().replace(0, 8, u64(length)), std::ios::binary);
    }
};

struct NameOfFormat
{
    template <typename Format>
    static std::string GetName(int)
    {
        return std::is_same_v<Format, SensorFormat> ? "SensorData" : "TrajectoryData";
    }
};

using Formats = testing::Types<SensorFormat, TrajectoryFormat>;
TYPED_TEST_SUITE(StoreStream, Formats, NameOfFormat);

// Bytes

TYPED_TEST(StoreStream, EmptyStoreWritesARootTableWithoutFields)
{
    EXPECT_EQ(emptyStoreStream().size(), 20U);
    EXPECT_EQ(written(typename TestFixture::Store()), emptyStoreStream());
}

TYPED_TEST(StoreStream, EmptyStreamReadsAsAnEmptyStore)
{
    auto const store = readBack<typename TestFixture::Store>(emptyStoreStream());
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(written(*store), emptyStoreStream());
}

TYPED_TEST(StoreStream, SmallStoreWritesItsLiteralBytes)
{
    EXPECT_EQ(written(TypeParam::smallStore()), this->smallStream);
}

TYPED_TEST(StoreStream, TwoStoresInOneStreamAreReadByTwoCalls)
{
    std::stringstream stream(std::ios::binary | std::ios::in | std::ios::out);
    stream << "before";
    ASSERT_TRUE(TypeParam::smallStore().write(stream));
    stream << "between";
    ASSERT_TRUE(typename TestFixture::Store().write(stream));
    stream << "x";

    stream.ignore(6);
    auto const first = TestFixture::Store::read(stream);
    stream.ignore(7);
    auto const second = TestFixture::Store::read(stream);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(written(*first), this->smallStream);
    EXPECT_EQ(written(*second), emptyStoreStream());
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.get(), 'x');
}

// Reading

TYPED_TEST(StoreStream, StreamThatIsNotGoodIsNotRead)
{
    for (auto const state : notGood) {
        std::istringstream stream(this->smallStream);
        stream.setstate(state);
        EXPECT_EQ(TestFixture::Store::read(stream), nullptr);
        EXPECT_EQ(stream.rdstate(), state);
        stream.clear();
        EXPECT_EQ(stream.tellg(), 0);
    }
}

TYPED_TEST(StoreStream, StreamCutAnywhereIsRefused)
{
    for (std::size_t length = 0; length < this->smallStream.size(); ++length) {
        EXPECT_FALSE(expectRefused<TypeParam>(this->smallStream.substr(0, length)).good)
            << length << " bytes";
    }
}

TYPED_TEST(StoreStream, LengthBelowFiveIsRefusedWithTheStreamStillGood)
{
    for (std::uint64_t length = 0; length < 5; ++length) {
        expectRefusedAfterReading<TypeParam>(u64(length) + std::string(length, '\0'));
    }
}

TYPED_TEST(StoreStream, InvalidBufferIsRefusedWithTheStreamDirectlyAfterIt)
{
    for (std::string const& invalid : TypeParam::invalidStreams()) {
        expectRefusedAfterReading<TypeParam>(invalid);
    }
}

TYPED_TEST(StoreStream, EveryDamagedByteIsReadOrRefusedWithoutHarm)
{
    for (std::size_t position = 8; position < this->smallStream.size(); ++position) {
        for (int const value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            std::string damaged = this->smallStream;
            damaged[position] = static_cast<char>(value);
            (void)readBack<typename TestFixture::Store>(damaged);
        }
    }
}

TYPED_TEST(StoreStream, LengthBeyondTheStreamIsRefused)
{
    for (std::uint64_t const length :
         {std::uint64_t{this->smallStream.size() - 8 + 1}, std::uint64_t{1} << 20U, std::uint64_t{1} << 31U})
    {
        EXPECT_FALSE(expectRefused<TypeParam>(TestFixture::streamWithLength(length).str()).good);
    }
}

TYPED_TEST(StoreStream, LengthOf2To40IsRefusedOrThrowsBadAlloc)
{
    auto stream = TestFixture::streamWithLength(std::uint64_t{1} << 40U);
    try {
        EXPECT_EQ(TestFixture::Store::read(stream), nullptr); // the allocator granted the address space
        EXPECT_FALSE(stream.good());
    } catch (std::bad_alloc const&) {
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(stream.tellg(), 8);
    }
}

TYPED_TEST(StoreStream, LengthBeyondAnyBufferThrowsLengthErrorWithTheStreamAfterTheLength)
{
    for (std::uint64_t const length : {std::uint64_t{1} << 63U, std::numeric_limits<std::uint64_t>::max()}) {
        auto stream = TestFixture::streamWithLength(length);
        EXPECT_THROW((void)TestFixture::Store::read(stream), std::length_error);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(stream.tellg(), 8);
    }
}

TYPED_TEST(StoreStream, ExceptionsEnabledOnTheStreamPassThroughReading)
{
    for (std::size_t const length : {4U, 100U}) {
        std::istringstream stream(this->smallStream.substr(0, length));
        stream.exceptions(std::ios::failbit);
        EXPECT_THROW((void)TestFixture::Store::read(stream), std::ios::failure);
    }
}

// Writing

TYPED_TEST(StoreStream, StreamThatIsNotGoodIsNotWrittenAndKeepsItsState)
{
    for (auto const state : notGood) {
        std::ostringstream stream;
        stream.setstate(state);
        EXPECT_FALSE(TypeParam::smallStore().write(stream));
        EXPECT_EQ(stream.rdstate(), state);
        EXPECT_EQ(stream.str(), "");
    }
}

TYPED_TEST(StoreStream, StreamThatFailsWhileBeingWrittenGivesFalse)
{
    for (std::size_t const room :
         {std::size_t{0}, std::size_t{4}, std::size_t{8}, std::size_t{100}, this->smallStream.size() - 1})
    {
        LimitedBuffer buffer(room);
        std::ostream stream(&buffer);
        EXPECT_FALSE(TypeParam::smallStore().write(stream));
        EXPECT_FALSE(stream.good());
    }
}

TYPED_TEST(StoreStream, ExceptionsEnabledOnTheStreamPassThroughWriting)
{
    LimitedBuffer buffer(100);
    std::ostream stream(&buffer);
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW((void)TypeParam::smallStore().write(stream), std::ios::failure);
}

TYPED_TEST(StoreStream, WriteDoesNotFlush)
{
    LimitedBuffer buffer(this->smallStream.size());
    std::ostream stream(&buffer);
    EXPECT_TRUE(TypeParam::smallStore().write(stream));
    EXPECT_EQ(buffer.flushes(), 0);
}

// The global byte order flag

TYPED_TEST(StoreStream, ReadsAndWritesClearTheByteOrderFlag)
{
    Endianness::bigEndian = true;
    EXPECT_EQ(written(TypeParam::smallStore()), this->smallStream);
    EXPECT_FALSE(Endianness::bigEndian);
    Endianness::bigEndian = true;
    EXPECT_NE(readBack<typename TestFixture::Store>(this->smallStream), nullptr);
    EXPECT_FALSE(Endianness::bigEndian);
}

TYPED_TEST(StoreStream, WriteToAFailedStreamClearsTheByteOrderFlag)
{
    for (auto const state : notGood) {
        Endianness::bigEndian = true;
        std::ostringstream stream;
        stream.setstate(state);
        EXPECT_FALSE(TypeParam::smallStore().write(stream));
        EXPECT_FALSE(Endianness::bigEndian);
    }
    Endianness::bigEndian = false;
}

TYPED_TEST(StoreStream, ReadFromAFailedStreamLeavesTheByteOrderFlag)
{
    Endianness::bigEndian = true;
    std::istringstream stream(this->smallStream);
    stream.setstate(std::ios::failbit);
    EXPECT_EQ(TestFixture::Store::read(stream), nullptr);
    EXPECT_TRUE(Endianness::bigEndian);
    Endianness::bigEndian = false;
}

} // namespace
