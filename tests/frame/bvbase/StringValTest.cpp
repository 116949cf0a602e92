#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/StringVal.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

namespace
{

using Bv_1_1::CodePageInterface;
using Bv_1_1::String;
using Bv_1_1::StringVal;

constexpr int utf8 = 65001;

TEST(StringVal, IsMadeOfAllTheNarrowText)
{
    String const string = String::adopt(StringVal::construct("\xE2\x82\xAC 5", -1, -1));
    EXPECT_EQ(string.text(), u"\u20AC 5");
}

TEST(StringVal, IsMadeOfTheFirstBytesOfTheNarrowText)
{
    EXPECT_EQ(String::adopt(StringVal::construct("text", 2, -1)).text(), u"te");
    EXPECT_EQ(String::adopt(StringVal::construct("text", 0, -1)).text(), u"");
    EXPECT_EQ(String::adopt(StringVal::construct("a\0b", 3, -1)).value()->length(), 3);
}

TEST(StringVal, NullTextGivesNoValue)
{
    EXPECT_EQ(StringVal::construct(nullptr, -1, -1), nullptr);
    EXPECT_EQ(StringVal::constructUsingCodepage(CodePageInterface{utf8, nullptr}, -1, -1), nullptr);
}

TEST(StringVal, IsMadeOfATextWithItsCodePage)
{
    CodePageInterface const source{utf8, "\xE2\x82\xAC 5"};
    EXPECT_EQ(String::adopt(StringVal::constructUsingCodepage(source, -1, -1)).text(), u"\u20AC 5");
    EXPECT_EQ(String::adopt(StringVal::constructUsingCodepage(source, 3, -1)).text(), u"\u20AC");
}

TEST(StringVal, ACodePageAsksForItsEncoding)
{
    EXPECT_EQ(String::adopt(StringVal::construct("\xC3\xBC", -1, utf8)).text(), u"\u00FC");
#if !defined(_WIN32)
    EXPECT_EQ(String::adopt(StringVal::construct("\xC3\xBC", -1, 0)).text(), u"\u00FC");
#endif
    CodePageInterface const source{1, "\xC3\xBC"};
    EXPECT_EQ(String::adopt(StringVal::constructUsingCodepage(source, -1, utf8)).text(), u"\u00FC");
}

TEST(StringVal, ACodePageThatThePlatformLacksIsRefused)
{
    constexpr int unknown = 999999;
    EXPECT_THROW(static_cast<void>(StringVal::construct("text", -1, unknown)), std::invalid_argument);
    EXPECT_THROW(
        static_cast<void>(StringVal::constructUsingCodepage(CodePageInterface{unknown, "text"}, -1, -1)),
        std::invalid_argument);
}

TEST(StringVal, ACodePageRecordBeginsWithTheNumber)
{
    EXPECT_TRUE((std::is_same_v<decltype(CodePageInterface::codePage), std::uint32_t>));
    EXPECT_EQ(offsetof(CodePageInterface, codePage), 0U);
}

TEST(StringVal, TheLengthCountsUnits)
{
    EXPECT_EQ(String::adopt(StringVal::construct("a\xF0\x9F\x98\x80", -1, -1)).value()->length(), 3);
}

TEST(StringVal, JoinsTwoTexts)
{
    EXPECT_EQ(String::adopt(StringVal::constructFromUtf16(u"one", u" two")).text(), u"one two");
    EXPECT_EQ(String::adopt(StringVal::constructFromUtf16(u"one")).text(), u"one");
}

TEST(StringVal, IsFreedWithItsLastReference)
{
    StringVal* const value = StringVal::construct("text", -1, -1);
    EXPECT_STREQ(value->narrow(), "text");
    value->ref();
    EXPECT_FALSE(value->unref());
    EXPECT_EQ(value->length(), 4);
    EXPECT_TRUE(value->unref());
}

} // namespace
