#include <roamscan/frame/values/Endianness.h>
#include <roamscan/streams/detail/FlatBufferRoot.h>
#include <roamscan/streams/detail/LengthPrefixedBuffer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>

namespace
{

using namespace oV::Roamscan::detail;

std::string written(std::string const& bytes)
{
    std::ostringstream stream;
    EXPECT_TRUE(writeLengthPrefixed(stream, std::as_bytes(std::span(bytes))));
    return stream.str();
}

TEST(StreamFrame, IsALittleEndianCountAndTheBytes)
{
    EXPECT_EQ(written("abc"), std::string("\x03\0\0\0\0\0\0\0abc", 11));
    EXPECT_EQ(written(""), std::string(8, '\0'));
    EXPECT_EQ(written(std::string(0x10203, 'x')).substr(0, 8), std::string("\x03\x02\x01\0\0\0\0\0", 8));
}

TEST(StreamFrame, ReadsExactlyTheWrittenBytes)
{
    std::istringstream stream(written("abc") + written("") + "rest");
    auto const first = readLengthPrefixed(stream);
    ASSERT_TRUE(first);
    EXPECT_EQ(std::string(reinterpret_cast<char const*>(first->bytes().data()), first->bytes().size()),
              "abc");
    auto const second = readLengthPrefixed(stream);
    ASSERT_TRUE(second);
    EXPECT_TRUE(second->bytes().empty());
    EXPECT_EQ(stream.tellg(), 19);
    EXPECT_TRUE(stream.good());
}

TEST(StreamFrame, AllEightBytesOfTheCountAreRead)
{
    // 2^56 + 1 bytes cannot be allocated. Without its upper bytes the count would be 1.
    std::istringstream stream(std::string("\x01\0\0\0\0\0\0\x01x", 9));
    EXPECT_THROW((void)readLengthPrefixed(stream), std::bad_alloc);
    EXPECT_EQ(stream.tellg(), 8);
    EXPECT_TRUE(stream.good());
}

TEST(StreamFrame, ATruncatedCountOrBufferGivesNothing)
{
    std::string const whole = written("abc");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        std::istringstream stream(whole.substr(0, length));
        EXPECT_FALSE(readLengthPrefixed(stream)) << length << " bytes";
        EXPECT_TRUE(stream.eof() && stream.fail());
    }
}

TEST(StreamFrame, ATruncatedCountClearsTheByteOrderFlag)
{
    oV::Endianness::bigEndian = true;
    std::istringstream stream(std::string(4, '\0'));
    EXPECT_FALSE(readLengthPrefixed(stream));
    EXPECT_FALSE(oV::Endianness::bigEndian);
}

TEST(StreamFrame, AStreamThatIsNotGoodStaysUnchanged)
{
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        std::stringstream stream(written("abc"));
        stream.setstate(state);
        EXPECT_FALSE(readLengthPrefixed(stream));
        EXPECT_FALSE(writeLengthPrefixed(stream, {}));
        EXPECT_EQ(stream.rdstate(), state);
        EXPECT_EQ(stream.str(), written("abc"));
        stream.clear();
        EXPECT_EQ(stream.tellg(), 0);
    }
}

TEST(StreamBuffer, RefusesASizeBeyondAnyObject)
{
    std::istringstream stream(std::string(8, '\xFF'));
    EXPECT_THROW((void)readLengthPrefixed(stream), std::length_error);
}

struct AnyTable
{
    [[nodiscard]] bool Verify(flatbuffers::Verifier& /*verifier*/) const { return true; }
};

TEST(FlatBufferRoot, ABufferBeyondTheRangeOfItsOffsetsIsRefused)
{
    // Only the first bytes are read, so the span may be larger than the array.
    alignas(8) std::byte const bytes[16] = {std::byte{8}}; // the root lies at 8
    EXPECT_NE(verifiedRoot<AnyTable>(bytes), nullptr);
    EXPECT_NE(verifiedRoot<AnyTable>(std::span(&bytes[0], largestFlatBuffer)), nullptr);
    EXPECT_EQ(verifiedRoot<AnyTable>(std::span(&bytes[0], largestFlatBuffer + 1)), nullptr);
}

} // namespace
