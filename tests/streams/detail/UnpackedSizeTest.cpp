#include <roamscan/streams/detail/UnpackedSize.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace
{

using oV::Roamscan::detail::UnpackedSize;

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;

TEST(UnpackedSize, IsAlwaysAcceptedUpTo256MiB)
{
    EXPECT_TRUE(UnpackedSize(0).add(256 * mebibyte));
    EXPECT_FALSE(UnpackedSize(0).add(256 * mebibyte + 1));
    EXPECT_TRUE(UnpackedSize(16 * mebibyte).add(256 * mebibyte));
    EXPECT_FALSE(UnpackedSize(16 * mebibyte).add(256 * mebibyte + 1));
}

TEST(UnpackedSize, IsAcceptedUpToSixteenTimesALargeBuffer)
{
    EXPECT_TRUE(UnpackedSize(17 * mebibyte).add(17 * 16 * mebibyte));
    EXPECT_FALSE(UnpackedSize(17 * mebibyte).add(17 * 16 * mebibyte + 1));
    EXPECT_FALSE(UnpackedSize(17 * mebibyte).add(std::numeric_limits<std::uint64_t>::max()));
}

TEST(UnpackedSize, CountsTheSum)
{
    UnpackedSize size(0);
    EXPECT_TRUE(size.add(128 * mebibyte));
    EXPECT_TRUE(size.add(128 * mebibyte));
    EXPECT_TRUE(size.add(0));
    EXPECT_FALSE(size.add(1));
    EXPECT_FALSE(size.add(0));
}

} // namespace
