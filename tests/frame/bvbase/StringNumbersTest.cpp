#include "tests/support/NarrowText.h"
#include "tests/support/StringInside.h"

#include <roamscan/frame/bvbase/String.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace
{

using Bv_1_1::String;
using support::narrow;
using support::sharedValue;

String fromDouble(double number)
{
    String string;
    string += number;
    return string;
}

template <typename T>
T parsed(wchar_t const* text, T start)
{
    String(text) >> start;
    return start;
}

} // namespace

// Doubles

TEST(String, AppendsTheShortestFormOfADouble)
{
    EXPECT_EQ(narrow(fromDouble(0.1)), "0.1");
    EXPECT_EQ(narrow(fromDouble(0.1 + 0.2)), "0.30000000000000004");
    EXPECT_EQ(narrow(fromDouble(-17.25)), "-17.25");
    EXPECT_EQ(narrow(fromDouble(300.0)), "300");
    EXPECT_EQ(narrow(fromDouble(1e22)), "1e+22");
    EXPECT_EQ(narrow(fromDouble(-0.0)), "-0");
    EXPECT_EQ(narrow(fromDouble(5e-324)), "5e-324");
    EXPECT_EQ(narrow(fromDouble(-std::numeric_limits<double>::max())), "-1.7976931348623157e+308");
    EXPECT_EQ(narrow(fromDouble(std::numeric_limits<double>::infinity())), "inf");
    EXPECT_EQ(narrow(fromDouble(std::numeric_limits<double>::quiet_NaN())), "nan");
}

TEST(String, AppendsADoubleToTheTextAndReturnsTheString)
{
    String string(L"Node_");
    String& result = string += 12.5;
    EXPECT_EQ(&result, &string);
    EXPECT_EQ(narrow(string), "Node_12.5");
}

TEST(String, EveryAppendedDoubleParsesToTheSameValue)
{
    constexpr std::uint64_t seed = 20240611;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int i = 0; i < 20000; ++i) {
        auto const number = std::bit_cast<double>(random());
        if (!std::isfinite(number)) {
            continue;
        }
        double result = 1;
        fromDouble(number) >> result;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(result), std::bit_cast<std::uint64_t>(number)) << number;
    }
    EXPECT_EQ(parsed(L"inf", 1.0), std::numeric_limits<double>::infinity());
    EXPECT_EQ(parsed(L"-inf", 1.0), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(parsed(L"nan", 1.0)));
}

// Parsing

TEST(String, ParsesIntegers)
{
    EXPECT_EQ(parsed(L"0", 1), 0);
    EXPECT_EQ(parsed(L"-17", 1), -17);
    EXPECT_EQ(parsed(L"+17", 1), 17);
    EXPECT_EQ(parsed(L" \t\r\n42 \t\r\n", 1), 42);
    EXPECT_EQ(parsed(L"-2147483648", 1), std::numeric_limits<int>::min());
    EXPECT_EQ(parsed(L"2147483647", 1), std::numeric_limits<int>::max());
    EXPECT_EQ(parsed(L"007", 1), 7);
}

TEST(String, TextThatIsNotAnIntegerLeavesTheTargetUnchanged)
{
    for (wchar_t const* const text : {L"",
                                      L"   ",
                                      L"x",
                                      L"1x",
                                      L"x1",
                                      L"1 2",
                                      L"1.5",
                                      L"0x10",
                                      L"+",
                                      L"-",
                                      L"+-1",
                                      L"++1",
                                      L"2147483648",
                                      L"-2147483649",
                                      L"1\u0660",
                                      L"\uFF11",
                                      L"\u013112"})
    {
        EXPECT_EQ(parsed(text, 77), 77) << narrow(text);
    }
    int target = 77;
    String::NIL >> target;
    EXPECT_EQ(target, 77);
}

TEST(String, ParsesDoubles)
{
    EXPECT_EQ(parsed(L"0.1", 1.0), 0.1);
    EXPECT_EQ(parsed(L" -17.25 ", 1.0), -17.25);
    EXPECT_EQ(parsed(L"+1e3", 1.0), 1000.0);
    EXPECT_EQ(parsed(L"5", 1.0), 5.0);
    EXPECT_TRUE(std::signbit(parsed(L"-0", 1.0)));
}

TEST(String, TextThatIsNotADoubleLeavesTheTargetUnchanged)
{
    for (wchar_t const* const text :
         {L"", L" ", L"x", L"1.5x", L"1,5", L"1.5 2", L"0x1p3", L"+-1", L"1e999", L"-1e999"})
    {
        EXPECT_EQ(parsed(text, 77.5), 77.5) << narrow(text);
    }
    double target = 77.5;
    String::NIL >> target;
    EXPECT_EQ(target, 77.5);
}

TEST(String, ParsesBools)
{
    for (wchar_t const* const text : {L"1", L"true", L" true\n"}) {
        EXPECT_TRUE(parsed(text, false)) << narrow(text);
    }
    for (wchar_t const* const text : {L"0", L"false", L"\tfalse "}) {
        EXPECT_FALSE(parsed(text, true)) << narrow(text);
    }
}

TEST(String, TextThatIsNotABoolLeavesTheTargetUnchanged)
{
    for (wchar_t const* const text : {L"", L"2", L"-1", L"yes", L"True", L"10", L"truetrue"}) {
        EXPECT_TRUE(parsed(text, true)) << narrow(text);
        EXPECT_FALSE(parsed(text, false)) << narrow(text);
    }
    bool target = true;
    String::NIL >> target;
    EXPECT_TRUE(target);
}

TEST(String, AppendedBoolsParseToTheSameValue)
{
    for (bool const value : {true, false}) {
        String string;
        string << value;
        bool result = !value;
        string >> result;
        EXPECT_EQ(result, value);
    }
}

TEST(String, ParsingIntoAStringSharesTheWholeText)
{
    String const source(L" two words ");
    String target(L"old");
    source >> target;
    EXPECT_EQ(sharedValue(target), sharedValue(source));
    String::NIL >> target;
    EXPECT_TRUE(target.isNil());
}

TEST(String, ParsingReturnsTheString)
{
    String const string(L"1");
    bool first = false;
    int second = 0;
    double third = 0;
    String fourth;
    String const& result = string >> first >> second >> third >> fourth;
    EXPECT_EQ(&result, &string);
    EXPECT_TRUE(first);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(third, 1.0);
    EXPECT_EQ(narrow(fourth), "1");
}
