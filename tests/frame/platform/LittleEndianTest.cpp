#include <roamscan/frame/platform/LittleEndian.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string_view>

using oV::Roamscan::fromLittleEndian;
using oV::Roamscan::toLittleEndian;

TEST(LittleEndian, TheLeastSignificantByteComesFirst)
{
    EXPECT_EQ(toLittleEndian(std::uint8_t{0x81}), (std::array<char, 1>{'\x81'}));
    EXPECT_EQ(toLittleEndian(std::uint16_t{0x8102}), (std::array<char, 2>{'\x02', '\x81'}));
    EXPECT_EQ(toLittleEndian(std::uint32_t{0x84030201}), (std::array<char, 4>{1, 2, 3, '\x84'}));
    EXPECT_EQ(toLittleEndian(std::uint64_t{0x8807060504030201}),
              (std::array<char, 8>{1, 2, 3, 4, 5, 6, 7, '\x88'}));
}

TEST(LittleEndian, BytesConvertToTheirNumber)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(fromLittleEndian(""sv), 0U);
    EXPECT_EQ(fromLittleEndian("\x81"sv), 0x81U);
    EXPECT_EQ(fromLittleEndian("\x02\x81"sv), 0x8102U);
    EXPECT_EQ(fromLittleEndian("\x01\x02\x03\x84"sv), 0x84030201U);
    EXPECT_EQ(fromLittleEndian("\x01\x02\x03\x04\x05\x06\x07\x88"sv), 0x8807060504030201U);
    EXPECT_EQ(fromLittleEndian("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv), 0xFFFFFFFFFFFFFFFFU);
}
