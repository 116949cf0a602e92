#include "tests/support/ModelTexts.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/StatusCode.h>

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using support::statusOf;
using support::textOf;
using support::valueOf;
using Texts = std::vector<String>;
using Limits = std::numeric_limits<double>;
namespace StatusCode = oV::StatusCode;

std::uint64_t bits(double number)
{
    return std::bit_cast<std::uint64_t>(number);
}

double ofBits(std::uint64_t number)
{
    return std::bit_cast<double>(number);
}

void expectBack(double number)
{
    EXPECT_EQ(bits(valueOf<double>(textOf(number))), bits(number)) << textOf(number);
}

void expectBack(String const& string)
{
    String const back = valueOf<String>(textOf(string));
    EXPECT_EQ(back, string) << textOf(string);
    EXPECT_EQ(back.isNil(), string.isNil());
}

} // namespace

TEST(ModelValues, WritesBooleans)
{
    EXPECT_EQ(textOf(true), "true");
    EXPECT_EQ(textOf(false), "false");
    EXPECT_TRUE(valueOf<bool>("true"));
    EXPECT_FALSE(valueOf<bool>("false"));
}

TEST(ModelValues, WritesIntegers)
{
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(INT_MIN), "-2147483648");
    EXPECT_EQ(textOf(INT_MAX), "2147483647");
    EXPECT_EQ(valueOf<int>("-2147483648"), INT_MIN);
    EXPECT_EQ(valueOf<int>("2147483647"), INT_MAX);
    EXPECT_EQ(valueOf<int>("-0"), 0);
    EXPECT_EQ(valueOf<int>("007"), 7);
}

TEST(ModelValues, WritesNumbersAsTheShortestTextThatReadsBack)
{
    EXPECT_EQ(textOf(0.0), "0");
    EXPECT_EQ(textOf(-0.0), "-0");
    EXPECT_EQ(textOf(3.0), "3");
    EXPECT_EQ(textOf(0.1), "0.1");
    EXPECT_EQ(textOf(-0.5), "-0.5");
    EXPECT_EQ(textOf(1e22), "1e+22");
    EXPECT_EQ(textOf(5e-324), "5e-324");
    EXPECT_EQ(textOf(Limits::max()), "1.7976931348623157e+308");
}

TEST(ModelValues, WritesInfinitiesAndNotNumbers)
{
    EXPECT_EQ(textOf(Limits::infinity()), "inf");
    EXPECT_EQ(textOf(-Limits::infinity()), "-inf");
    EXPECT_EQ(textOf(ofBits(0x7FF8000000000000)), "nan");
    EXPECT_EQ(textOf(ofBits(0xFFF8000000000000)), "nan:fff8000000000000");
    EXPECT_EQ(textOf(ofBits(0x7FF80000000000A1)), "nan:7ff80000000000a1");
    EXPECT_EQ(textOf(ofBits(0x7FF0000000000001)), "nan:7ff0000000000001");
}

TEST(ModelValues, EveryNumberComesBackBitForBit)
{
    for (double const number : {0.0,
                                -0.0,
                                5e-324,
                                -5e-324,
                                Limits::min(),
                                Limits::max(),
                                Limits::lowest(),
                                Limits::epsilon(),
                                Limits::infinity(),
                                -Limits::infinity(),
                                ofBits(0x000FFFFFFFFFFFFF),
                                ofBits(0x7FF8000000000000),
                                ofBits(0xFFF8000000000000),
                                ofBits(0x7FF0000000000001),
                                ofBits(0xFFFFFFFFFFFFFFFF)})
    {
        expectBack(number);
    }
    auto const seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int i = 0; i < 20000; ++i) {
        expectBack(ofBits(random()));
    }
}

TEST(ModelValues, ReadsNumbersThatAPersonWrites)
{
    EXPECT_EQ(valueOf<double>("12"), 12.0);
    EXPECT_EQ(valueOf<double>("-12.50"), -12.5);
    EXPECT_EQ(valueOf<double>("1E3"), 1000.0);
    EXPECT_EQ(valueOf<double>("1e+3"), 1000.0);
    EXPECT_EQ(valueOf<double>("2."), 2.0);
    EXPECT_EQ(bits(valueOf<double>("nan:7FF8000000000001")), 0x7FF8000000000001);
    EXPECT_EQ(valueOf<double>("0." + std::string(10000, '0') + "1e10001"), 1.0);
}

TEST(ModelValues, WritesStringsWithEscapes)
{
    EXPECT_EQ(textOf(String(L"")), "\"\"");
    EXPECT_EQ(textOf(String::NIL), "null");
    EXPECT_EQ(textOf(String(L"null")), "\"null\"");
    EXPECT_EQ(textOf(String(L"a \"b\" \\ c/")), R"("a \"b\" \\ c/")");
    EXPECT_EQ(textOf(String(L"1\n2\r3\t4")), R"("1\n2\r3\t4")");
    EXPECT_EQ(textOf(String::fromUtf16(std::u16string_view(u"\0\x01\x1F\x7F\u0080\u009F", 6))),
              R"("\u0000\u0001\u001f\u007f\u0080\u009f")");
    EXPECT_EQ(textOf(String::fromUtf16(u"\u2028\u2029\uFEFF")), R"("\u2028\u2029\ufeff")");
}

TEST(ModelValues, WritesOtherCharactersAsUtf8)
{
    EXPECT_EQ(textOf(String::fromUtf16(u"\u00A0")), "\"\xC2\xA0\"");
    EXPECT_EQ(textOf(String::fromUtf16(u"\u00E9")), "\"\xC3\xA9\"");
    EXPECT_EQ(textOf(String::fromUtf16(u"\u20AC")), "\"\xE2\x82\xAC\"");
    EXPECT_EQ(textOf(String::fromUtf16(u"\U0001F600")), "\"\xF0\x9F\x98\x80\"");
    EXPECT_EQ(textOf(String::fromUtf16(u"\U0010FFFF")), "\"\xF4\x8F\xBF\xBF\"");
    EXPECT_EQ(textOf(String::fromUtf16(u"\uFFFF")), "\"\xEF\xBF\xBF\"");
}

TEST(ModelValues, WritesLoneSurrogatesAsTheirUnits)
{
    EXPECT_EQ(textOf(String::fromUtf16(std::u16string{0xD800})), R"("\ud800")");
    EXPECT_EQ(textOf(String::fromUtf16(std::u16string{0xDFFF, u'a'})), R"("\udfffa")");
    EXPECT_EQ(textOf(String::fromUtf16(std::u16string{0xDC00, 0xD800})), R"("\udc00\ud800")");
    EXPECT_EQ(textOf(String::fromUtf16(std::u16string{0xD800, 0xD83D, 0xDE00})),
              "\"\\ud800\xF0\x9F\x98\x80\"");
}

TEST(ModelValues, EveryUnitComesBack)
{
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        expectBack(String::fromUtf16(std::u16string{u'a', static_cast<char16_t>(unit), u'b'}));
    }
}

TEST(ModelValues, AnyUnitsInARowComeBack)
{
    expectBack(String::NIL);
    expectBack(String::EMPTY);
    auto const seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::u16string const chosen{u'a',
                                u'"',
                                u'\\',
                                u'u',
                                u'0',
                                u'\n',
                                u' ',
                                u'}',
                                0xD800,
                                0xDBFF,
                                0xDC00,
                                0xDFFF,
                                0x00E9,
                                0x20AC,
                                0xFFFF,
                                0x0000};
    for (int i = 0; i < 5000; ++i) {
        std::u16string units(random() % 12, u'\0');
        for (char16_t& unit : units) {
            unit = chosen[random() % chosen.size()];
        }
        expectBack(String::fromUtf16(units));
    }
}

TEST(ModelValues, ReadsEscapesInEitherCase)
{
    EXPECT_EQ(valueOf<String>(R"("\u00e9\u00E9")"), String::fromUtf16(u"\u00E9\u00E9"));
    EXPECT_EQ(valueOf<String>(R"("\uabcf\uABCF")"), String::fromUtf16(u"\uABCF\uABCF"));
    EXPECT_EQ(valueOf<String>(R"("\ud83d\uDE00")"), String::fromUtf16(u"\U0001F600"));
}

TEST(ModelValues, WritesLists)
{
    EXPECT_EQ(textOf(Texts{}), "[]");
    EXPECT_EQ(textOf(Texts{L"a"}), R"(["a"])");
    EXPECT_EQ(textOf(Texts{L"", L"a"}), R"(["", "a"])");
    EXPECT_EQ(textOf(Texts{L"a", String::NIL, L"", L"b, c]"}), R"(["a", null, "", "b, c]"])");
}

TEST(ModelValues, ListsComeBack)
{
    for (Texts const& list :
         {Texts{}, Texts{String::NIL}, Texts{L""}, Texts{L"a", L"a", String::NIL, L"\"]\n"}}) {
        Texts const back = valueOf<Texts>(textOf(list));
        ASSERT_EQ(back, list);
        for (std::size_t i = 0; i < list.size(); ++i) {
            EXPECT_EQ(back[i].isNil(), list[i].isNil());
        }
    }
    EXPECT_EQ(valueOf<Texts>(" [ \"a\"\n,null ] "), (Texts{L"a", String::NIL}));
}

TEST(ModelValues, AValueOfAnotherKindIsRefused)
{
    for (char const* const text : {"1", "truer", "True", "null", "\"true\"", "[]", "{", "}", ";"}) {
        EXPECT_EQ(statusOf<bool>(text), StatusCode::wrongKind) << text;
    }
    for (char const* const text : {"true", "1.0", "1e2", "+1", "0x10", "-", "nan", "\"1\"", "[1]"}) {
        EXPECT_EQ(statusOf<int>(text), StatusCode::wrongKind) << text;
    }
    for (char const* const text : {"true",
                                   "+1",
                                   "-",
                                   ".5",
                                   "-.5",
                                   "1e",
                                   "0x10",
                                   "infinity",
                                   "Inf",
                                   "-nan",
                                   "nan:",
                                   "nan:7ff800000000000",
                                   "nan:7ff80000000000000",
                                   "nan:07ff8000000000000",
                                   "nan:7ff800000000000g",
                                   "nan:7ff0000000000000",
                                   "nan:3ff0000000000000",
                                   "\"1\"",
                                   "[]"})
    {
        EXPECT_EQ(statusOf<double>(text), StatusCode::wrongKind) << text;
    }
    for (char const* const text : {"1", "nul", "Null", "[]", "true"}) {
        EXPECT_EQ(statusOf<String>(text), StatusCode::wrongKind) << text;
    }
    for (char const* const text : {"\"a\"", "null", "1", "[1]", "[\"a\", true]"}) {
        EXPECT_EQ(statusOf<Texts>(text), StatusCode::wrongKind) << text;
    }
}

TEST(ModelValues, ANumberBeyondItsTypeIsRefused)
{
    EXPECT_EQ(statusOf<int>("2147483648"), StatusCode::outOfRange);
    EXPECT_EQ(statusOf<int>("-2147483649"), StatusCode::outOfRange);
    EXPECT_EQ(statusOf<int>("99999999999999999999999"), StatusCode::outOfRange);
    EXPECT_EQ(statusOf<double>("1e309"), StatusCode::outOfRange);
    EXPECT_EQ(statusOf<double>("-1e999"), StatusCode::outOfRange);
    EXPECT_EQ(statusOf<double>("1e-400"), StatusCode::outOfRange);
}

TEST(ModelValues, AValueThatEndsEarlyIsRefused)
{
    for (char const* const text : {"", " \n", "\"", "\"a", "\"\\", "\"\\u", "\"\\u00e", "\"a\\n"}) {
        EXPECT_EQ(statusOf<String>(text), StatusCode::unexpectedEnd) << text;
    }
    for (char const* const text : {"", "[", "[\"a\"", "[\"a\",", "[\"a"}) {
        EXPECT_EQ(statusOf<Texts>(text), StatusCode::unexpectedEnd) << text;
    }
    EXPECT_EQ(statusOf<bool>(""), StatusCode::unexpectedEnd);
    EXPECT_EQ(statusOf<int>(""), StatusCode::unexpectedEnd);
    EXPECT_EQ(statusOf<double>(""), StatusCode::unexpectedEnd);
}

TEST(ModelValues, DamagedStringsAreRefused)
{
    for (char const* const text : {R"("\a")",
                                   R"("\/")",
                                   R"("\u00eg")",
                                   R"("\U00e9")",
                                   "\"a\nb\"",
                                   "\"a\tb\"",
                                   "\"\x01\"",
                                   "\"\xFF\"",
                                   "\"\xC3\"",
                                   "\"\xC3\\n\"",
                                   "\"\xC0\x80\"",
                                   "\"\xED\xA0\x80\"",
                                   "\"\xF4\x90\x80\x80\"",
                                   "@",
                                   "'a'",
                                   "(",
                                   ","})
    {
        EXPECT_EQ(statusOf<String>(text), StatusCode::syntaxError) << text;
    }
    EXPECT_EQ(statusOf<String>(std::string("\"\0\"", 3)), StatusCode::syntaxError);
}

TEST(ModelValues, DamagedListsAreRefused)
{
    for (char const* const text :
         {"[\"a\" \"b\"]", "[\"a\";]", "[,]", "[\"a\",]", "[\"a\",,\"b\"]", "[\"\\x\"]"}) {
        EXPECT_EQ(statusOf<Texts>(text), StatusCode::syntaxError) << text;
    }
}
