#include "tests/support/NarrowText.h"
#include "tests/support/StringInside.h"

#include <roamscan/frame/bvbase/String.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using Bv_1_1::String;
using support::narrow;
using support::referenceCount;
using support::sharedValue;

} // namespace

// Values

TEST(String, IsOnePointer)
{
    EXPECT_EQ(sizeof(String), sizeof(void*));
}

TEST(String, NilIsTheNullPointer)
{
    EXPECT_EQ(sharedValue(String::NIL), nullptr);
    EXPECT_TRUE(String::NIL.isNil());
    EXPECT_EQ(String::NIL.value(), nullptr);
}

TEST(String, NilIsNotTheEmptyString)
{
    EXPECT_NE(sharedValue(String::EMPTY), nullptr);
    EXPECT_FALSE(String::EMPTY.isNil());
    EXPECT_FALSE(String::NIL.compareEquality(String::EMPTY));
    EXPECT_FALSE(String::EMPTY.compareEquality(String::NIL));
}

TEST(String, NilHasAnEmptyText)
{
    EXPECT_TRUE(String::NIL.text().empty());
    EXPECT_STREQ(String::NIL.stringAnsi(), "");
}

TEST(String, TheEmptyStringHasALengthOfZero)
{
    EXPECT_EQ(String::EMPTY.value()->length(), 0);
    EXPECT_EQ(String::EMPTY.text(), u"");
    EXPECT_EQ(*String::EMPTY.text().data(), u'\0');
    EXPECT_STREQ(String::EMPTY.stringAnsi(), "");
}

TEST(String, ADefaultStringIsNil)
{
    EXPECT_TRUE(String().isNil());
}

TEST(String, ConstructsFromWideText)
{
    String const string(L"Gr\u00FC\u00DFe");
    EXPECT_EQ(string.text(), u"Gr\u00FC\u00DFe");
    EXPECT_EQ(string.value()->length(), 5);
}

TEST(String, ANullWidePointerIsNil)
{
    wchar_t const* const null = nullptr;
    EXPECT_TRUE(String(null).isNil());
}

TEST(String, EmptyWideTextIsTheEmptyStringAndNotNil)
{
    EXPECT_TRUE(String(L"").compareEquality(String::EMPTY));
    EXPECT_FALSE(String(L"").isNil());
}

TEST(String, WideCodePointsAboveFFFFBecomeSurrogatePairs)
{
    EXPECT_EQ(String(L"\U0001F600").text(), u"\xD83D\xDE00");
    EXPECT_EQ(String(L"\U00010000\U0010FFFF").text(), u"\xD800\xDC00\xDBFF\xDFFF");
}

TEST(String, WideCodePointsOutsideUnicodeAreReplaced)
{
    if constexpr (sizeof(wchar_t) == 4) {
        wchar_t const text[] = {
            L'a', static_cast<wchar_t>(0x110000), static_cast<wchar_t>(0xFFFFFFFF), L'b', 0};
        EXPECT_EQ(String(text).text(), u"a\uFFFD\uFFFDb");
    }
}

// Sharing

TEST(String, TheReferenceCountIsTheFirstMemberOfTheValue)
{
    String const first(L"text");
    EXPECT_EQ(referenceCount(first), 1U);
    {
        String const second(first);
        EXPECT_EQ(referenceCount(first), 2U);
        EXPECT_EQ(sharedValue(second), sharedValue(first));
    }
    EXPECT_EQ(referenceCount(first), 1U);
}

TEST(String, TheTextFollowsTheHeaderOfItsValue)
{
    String const string(L"text");
    auto const* const value = static_cast<char const*>(sharedValue(string));
    char16_t const* const units = string.text().data();
    EXPECT_EQ(static_cast<void const*>(units), value + sizeof(Bv_1_1::StringVal));
    EXPECT_EQ(units[4], u'\0');
}

TEST(String, CopyingNilGivesNil)
{
    String copy(String::NIL);
    copy = String::NIL;
    EXPECT_TRUE(copy.isNil());
}

TEST(String, AssignmentSharesAndReleases)
{
    String const first(L"first");
    String const second(L"second");
    String string(first);
    string = second;
    EXPECT_EQ(referenceCount(first), 1U);
    EXPECT_EQ(referenceCount(second), 2U);
    EXPECT_EQ(sharedValue(string), sharedValue(second));
}

TEST(String, AssigningAStringToItselfKeepsIt)
{
    String string(L"text");
    String const& same = string;
    string = same;
    EXPECT_EQ(narrow(string), "text");
    EXPECT_EQ(referenceCount(string), 1U);
    String& self = string;
    string = std::move(self);
    EXPECT_EQ(narrow(string), "text");
}

TEST(String, MovingTakesTheValueAndLeavesNil)
{
    String first(L"text");
    void const* const value = sharedValue(first);
    String second(std::move(first));
    EXPECT_TRUE(first.isNil()); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(sharedValue(second), value);
    EXPECT_EQ(referenceCount(second), 1U);
    String third(L"other");
    third = std::move(second);
    EXPECT_TRUE(second.isNil()); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(sharedValue(third), value);
}

TEST(String, CopiesAndMovesAreNoexcept)
{
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<String>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<String>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<String>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<String>);
}

TEST(String, AnAdoptedValueIsNotCountedAgain)
{
    String const string = String::adopt(Bv_1_1::StringVal::construct("text", -1, -1));
    EXPECT_EQ(referenceCount(string), 1U);
    EXPECT_EQ(narrow(string), "text");
    EXPECT_TRUE(String::adopt(nullptr).isNil());
}

TEST(String, ManyThreadsMayCopyAndReleaseOneValue)
{
    String const string(L"shared");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&string] {
            for (int round = 0; round < 10000; ++round) {
                String const copy(string);
                String other(L"own");
                other = copy;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(referenceCount(string), 1U);
}

// Comparison

TEST(String, CompareGivesZeroForEqualTexts)
{
    EXPECT_EQ(String(L"text").compare(L"text"), 0);
    EXPECT_EQ(String(L"\U0001F600").compare(L"\U0001F600"), 0);
    EXPECT_EQ(String::EMPTY.compare(L""), 0);
}

TEST(String, CompareOrdersByUnits)
{
    EXPECT_LT(String(L"abc").compare(L"abd"), 0);
    EXPECT_GT(String(L"abd").compare(L"abc"), 0);
    EXPECT_LT(String(L"ab").compare(L"abc"), 0);
    EXPECT_GT(String(L"abc").compare(L"ab"), 0);
    EXPECT_GT(String(L"text").compare(L"Text"), 0);
    EXPECT_GT(String(L"\uFFFD").compare(L"\U0001F600"), 0); // a pair begins with 0xD83D
}

TEST(String, CompareTreatsANullPointerAsNil)
{
    wchar_t const* const null = nullptr;
    EXPECT_EQ(String::NIL.compare(null), 0);
    EXPECT_LT(String::NIL.compare(L""), 0);
    EXPECT_GT(String::EMPTY.compare(null), 0);
}

TEST(String, EqualityComparesTheTexts)
{
    String const text(L"text");
    EXPECT_TRUE(text.compareEquality(text));
    EXPECT_TRUE(text.compareEquality(String::fromNarrow("text")));
    EXPECT_FALSE(text.compareEquality(L"texts"));
    EXPECT_FALSE(text.compareEquality(L"Text"));
    EXPECT_FALSE(text.compareEquality(String::NIL));
    EXPECT_TRUE(String::NIL.compareEquality(String()));
    EXPECT_TRUE(text == String(L"text"));
    EXPECT_TRUE(text != String(L"other"));
}

TEST(String, NilIsLessThanEveryText)
{
    EXPECT_LT(String::NIL, String::EMPTY);
    EXPECT_GT(String::EMPTY, String::NIL);
    EXPECT_EQ(String::NIL <=> String(), std::strong_ordering::equal);
    EXPECT_LT(String(L"a"), String(L"b"));
    EXPECT_GT(String(L"b"), String(L"a"));
    EXPECT_LT(String::EMPTY, String(L"a"));
}
