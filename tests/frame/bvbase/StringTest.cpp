#include "tests/support/StringInside.h"

#include <roamscan/frame/bvbase/String.h>

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using Bv_1_1::String;
using support::referenceCount;
using support::sharedValue;

std::string narrow(String const& string)
{
    return string.stringAnsi();
}

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

TEST(String, NilReadsAsAnEmptyText)
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

TEST(String, IsMadeOfWideText)
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

TEST(String, WideCodePointsBeyondTheFirstPlaneBecomePairs)
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

TEST(String, AValueBeginsWithItsReferenceCount)
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

TEST(String, TheTextStandsBehindTheHeaderOfItsValue)
{
    String const string(L"text");
    auto const* const value = static_cast<char const*>(sharedValue(string));
    char16_t const* const units = string.text().data();
    EXPECT_EQ(static_cast<void const*>(units), value + sizeof(Bv_1_1::StringVal));
    EXPECT_EQ(units[4], u'\0');
}

TEST(String, CopyingNilTouchesNothing)
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

TEST(String, CopiesAndMovesCannotFail)
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

TEST(String, ManyThreadsMayCopyAndDropOneValue)
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

// Narrow text

TEST(String, NarrowTextIsUtf8)
{
    EXPECT_STREQ(String(L"Gr\u00FC\u00DFe \u20AC \U0001F600").stringAnsi(),
                 "Gr\xC3\xBC\xC3\x9F"
                 "e \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST(String, IsMadeOfNarrowText)
{
    EXPECT_EQ(String::fromNarrow("Gr\xC3\xBC\xC3\x9F"
                                 "e \xF0\x9F\x98\x80")
                  .text(),
              u"Gr\u00FC\u00DFe \U0001F600");
}

TEST(String, ANullNarrowPointerIsNil)
{
    EXPECT_TRUE(String::fromNarrow(nullptr).isNil());
}

TEST(String, EmptyNarrowTextIsTheEmptyStringAndNotNil)
{
    EXPECT_FALSE(String::fromNarrow("").isNil());
    EXPECT_TRUE(String::fromNarrow("").compareEquality(String::EMPTY));
}

TEST(String, MalformedNarrowTextIsReplaced)
{
    EXPECT_EQ(String::fromNarrow("a\xFF"
                                 "b")
                  .text(),
              u"a\uFFFDb");
    EXPECT_EQ(String::fromNarrow("a\x80z").text(), u"a\uFFFDz");             // a trail without a lead
    EXPECT_EQ(String::fromNarrow("a\xE2\x82").text(), u"a\uFFFD");           // cut short by the end
    EXPECT_EQ(String::fromNarrow("a\xE2z").text(), u"a\uFFFDz");             // cut short by a letter
    EXPECT_EQ(String::fromNarrow("a\xC0\xAFz").text(), u"a\uFFFDz");         // overlong
    EXPECT_EQ(String::fromNarrow("a\xED\xA0\x80z").text(), u"a\uFFFDz");     // a surrogate
    EXPECT_EQ(String::fromNarrow("a\xF4\x90\x80\x80z").text(), u"a\uFFFDz"); // beyond Unicode
}

TEST(String, LoneSurrogatesSurviveInsideAndAreReplacedInNarrowText)
{
    std::u16string const text{u'a', char16_t{0xD83D}, u'b', char16_t{0xDE00}, char16_t{0xD83D}};
    String const string = String::fromUtf16(text);
    EXPECT_EQ(string.text(), text);
    String copy(L"");
    copy << string;
    EXPECT_EQ(copy.text(), text);
    EXPECT_STREQ(string.stringAnsi(),
                 "a\xEF\xBF\xBD"
                 "b\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(String, ALeadSurrogateBeforeAPairIsReplacedAlone)
{
    std::u16string const text{char16_t{0xD83D}, char16_t{0xD83D}, char16_t{0xDE00}};
    EXPECT_STREQ(String::fromUtf16(text).stringAnsi(), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(String, NarrowTextComesBackFromARoundTrip)
{
    std::string text;
    for (char32_t const codePoint : {U'\x01',
                                     U'\x7F',
                                     U'\x80',
                                     U'\x7FF',
                                     U'\x800',
                                     U'\uD7FF',
                                     U'\uE000',
                                     U'\uFFFF',
                                     U'\U00010000',
                                     U'\U0010FFFF'})
    {
        std::wstring wide;
        if (sizeof(wchar_t) == 4) {
            wide.push_back(static_cast<wchar_t>(codePoint));
        }
        text += String(wide.c_str()).stringAnsi();
    }
    EXPECT_STREQ(String::fromNarrow(text.c_str()).stringAnsi(), text.c_str());
}

TEST(String, NarrowTextStaysWhileTheStringLives)
{
    String const string(L"text");
    char const* const text = string.stringAnsi();
    EXPECT_EQ(string.stringAnsi(), text);
    {
        String copy(string);
        EXPECT_EQ(copy.stringAnsi(), text);
        copy << L" and more";
        EXPECT_STREQ(copy.stringAnsi(), "text and more");
    }
    EXPECT_STREQ(text, "text");
}

TEST(String, ManyThreadsMayAskForNarrowTextAtOnce)
{
    constexpr int threadCount = 4;
    for (int round = 0; round < 200; ++round) {
        String const string(L"shared \u20AC");
        std::vector<char const*> texts(threadCount);
        std::atomic<int> waiting = threadCount;
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i) {
            threads.emplace_back([copy = string, &texts, &waiting, i] {
                --waiting;
                while (waiting > 0) {
                    std::this_thread::yield();
                }
                texts[i] = copy.stringAnsi();
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (char const* const text : texts) {
            EXPECT_EQ(text, string.stringAnsi());
        }
        EXPECT_STREQ(string.stringAnsi(), "shared \xE2\x82\xAC");
    }
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

TEST(String, CompareTakesANullPointerForNil)
{
    wchar_t const* const null = nullptr;
    EXPECT_EQ(String::NIL.compare(null), 0);
    EXPECT_LT(String::NIL.compare(L""), 0);
    EXPECT_GT(String::EMPTY.compare(null), 0);
}

TEST(String, EqualityIsThatOfTheTexts)
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

TEST(String, OrderPutsNilBelowEveryText)
{
    EXPECT_LT(String::NIL, String::EMPTY);
    EXPECT_GT(String::EMPTY, String::NIL);
    EXPECT_EQ(String::NIL <=> String(), std::strong_ordering::equal);
    EXPECT_LT(String(L"a"), String(L"b"));
    EXPECT_GT(String(L"b"), String(L"a"));
    EXPECT_LT(String::EMPTY, String(L"a"));
}

// Appending

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

TEST(String, AppendingDoesNotChangeOtherHolders)
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

template <typename T>
concept Appendable = requires(String string, T value)
{
    string << value;
};

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

TEST(String, AppendsADoubleBehindTheTextAndReturnsTheString)
{
    String string(L"Node_");
    String& result = string += 12.5;
    EXPECT_EQ(&result, &string);
    EXPECT_EQ(narrow(string), "Node_12.5");
}

TEST(String, EveryDoubleReadsBackToTheSameValue)
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

TEST(String, TextThatIsNoIntegerLeavesTheTargetAlone)
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

TEST(String, TextThatIsNoDoubleLeavesTheTargetAlone)
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

TEST(String, TextThatIsNoBoolLeavesTheTargetAlone)
{
    for (wchar_t const* const text : {L"", L"2", L"-1", L"yes", L"True", L"10", L"truetrue"}) {
        EXPECT_TRUE(parsed(text, true)) << narrow(text);
        EXPECT_FALSE(parsed(text, false)) << narrow(text);
    }
    bool target = true;
    String::NIL >> target;
    EXPECT_TRUE(target);
}

TEST(String, BoolsReadBackAsTheyWereAppended)
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

} // namespace
