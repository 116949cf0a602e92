#include "tests/support/NarrowText.h"
#include "tests/support/StringInside.h"

#include <roamscan/frame/bvbase/String.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace
{

using Bv_1_1::String;
using support::narrow;
using support::sharedValue;

template <typename T>
concept Appendable = requires(String string, T value)
{
    string << value;
};

} // namespace

TEST(String, AppendsTexts)
{
    String string(L"one");
    String& result = string << String(L" two") << L" three";
    EXPECT_EQ(&result, &string);
    EXPECT_EQ(narrow(string), "one two three");
}

TEST(String, AppendsIntegersInDecimalForm)
{
    String string(L"");
    string << 0 << L" " << -17 << L" " << std::numeric_limits<int>::min() << L" "
           << std::numeric_limits<int>::max() << L" " << 0ULL << L" "
           << std::numeric_limits<unsigned long long>::max();
    EXPECT_EQ(narrow(string), "0 -17 -2147483648 2147483647 0 18446744073709551615");
}

TEST(String, AppendsBoolsAsDigits)
{
    String string;
    string << true << false;
    EXPECT_EQ(narrow(string), "10");
}

TEST(String, AppendingToNilStartsAText)
{
    String string;
    string << L"text";
    EXPECT_EQ(narrow(string), "text");
    String number;
    number << 5;
    EXPECT_EQ(narrow(number), "5");
}

TEST(String, AppendingNilChangesNothing)
{
    wchar_t const* const null = nullptr;
    String string(L"text");
    void const* const value = sharedValue(string);
    string << String::NIL << null;
    EXPECT_EQ(narrow(string), "text");
    EXPECT_EQ(sharedValue(string), value);
    String nil;
    nil << String::NIL << null;
    EXPECT_TRUE(nil.isNil());
}

TEST(String, AppendingTheEmptyStringToNilGivesTheEmptyString)
{
    String first;
    first << String::EMPTY;
    EXPECT_TRUE(first.compareEquality(String::EMPTY));
    String second;
    second << L"";
    EXPECT_TRUE(second.compareEquality(String::EMPTY));
}

TEST(String, AppendingDoesNotChangeCopies)
{
    String first(L"text");
    String const second(first);
    first << L"!" << 1 << true << 2ULL << String(L"?");
    first += 0.5;
    EXPECT_EQ(narrow(second), "text");
    EXPECT_EQ(narrow(first), "text!112?0.5");
}

TEST(String, AppendingToACopyOfTheEmptyStringLeavesTheConstantEmpty)
{
    String string(String::EMPTY);
    string << L"text";
    EXPECT_EQ(String::EMPTY.value()->length(), 0);
    EXPECT_EQ(narrow(string), "text");
}

TEST(String, MayBeAppendedToItself)
{
    String string(L"ab");
    string << string;
    EXPECT_EQ(narrow(string), "abab");
}

TEST(String, PointersOtherThanWideTextCannotBeAppended)
{
    EXPECT_TRUE(Appendable<wchar_t const*>);
    EXPECT_FALSE(Appendable<char const*>); // would count as a bool
    EXPECT_FALSE(Appendable<int*>);
}

TEST(String, ConcatenatesAWideTextAndAString)
{
    String const second(L" two");
    EXPECT_EQ(narrow(L"one" + second), "one two");
    EXPECT_EQ(narrow(second), " two");
    EXPECT_EQ(narrow(L"one" + String::NIL), "one");
    wchar_t const* const null = nullptr;
    EXPECT_EQ(narrow(null + second), " two");
    EXPECT_TRUE((null + String::NIL).isNil());
}
