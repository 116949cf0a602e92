#include <roamscan/frame/ov/detail/FlatBufferRoot.h>
#include <roamscan/frame/ov/detail/StreamFrame.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
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
    EXPECT_TRUE(writeFrame(stream, std::as_bytes(std::span(bytes))));
    return stream.str();
}

TEST(StreamFrame, IsALittleEndianCountAndTheBytes)
{
    EXPECT_EQ(written("abc"), std::string("\x03\0\0\0\0\0\0\0abc", 11));
    EXPECT_EQ(written(""), std::string(8, '\0'));
    EXPECT_EQ(written(std::string(0x10203, 'x')).substr(0, 8), std::string("\x03\x02\x01\0\0\0\0\0", 8));
}

TEST(StreamFrame, ReadsBackWhatWasWrittenAndNoMore)
{
    std::istringstream stream(written("abc") + written("") + "rest");
    auto const first = readFrame(stream);
    ASSERT_TRUE(first);
    EXPECT_EQ(std::string(reinterpret_cast<char const*>(first->bytes().data()), first->bytes().size()), "abc");
    auto const second = readFrame(stream);
    ASSERT_TRUE(second);
    EXPECT_TRUE(second->bytes().empty());
    EXPECT_EQ(stream.tellg(), 19);
    EXPECT_TRUE(stream.good());
}

TEST(StreamFrame, ACountAcrossAllEightBytesIsReadInFull)
{
    // 2^56 + 1: no allocator gives that, and a count that lost its upper bytes would be read as 1.
    std::istringstream stream(std::string("\x01\0\0\0\0\0\0\x01x", 9));
    EXPECT_THROW((void)readFrame(stream), std::bad_alloc);
    EXPECT_EQ(stream.tellg(), 8);
    EXPECT_TRUE(stream.good());
}

TEST(FrameBuffer, RefusesWhatNoObjectCanBe)
{
    std::istringstream stream(std::string(8, '\xFF'));
    EXPECT_THROW((void)readFrame(stream), std::length_error);
}

TEST(FlatBufferRoot, UnpackedSizesUpToSixteenTimesTheBufferAreReasonable)
{
    EXPECT_TRUE(unpackedSizeIsReasonable(0, 0));
    EXPECT_TRUE(unpackedSizeIsReasonable(1600, 100));
    EXPECT_FALSE(unpackedSizeIsReasonable(1616, 100));
    EXPECT_FALSE(unpackedSizeIsReasonable(std::numeric_limits<std::uint64_t>::max(), 1000));
}

} // namespace
