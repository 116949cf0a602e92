#include "tests/support/Attributes.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace support::attributes;
using oV::ModelFormat;
using oV::ReadContext;
using oV::WriteContext;
using Format = oV::ModelFormat::Format;
namespace StatusCode = oV::StatusCode;

template <typename T>
SmartPtr<Attr<T>> attr(T const& value)
{
    SmartPtr<Attr<T>> attribute(new Attr<T>(CreateType::Fresh, nullptr));
    attribute->assignFrom(value, nullptr, nullptr);
    return attribute;
}

template <typename T>
std::string written(T const& value, Format format, bool writeDefaults)
{
    std::ostringstream stream;
    WriteContext context(format, writeDefaults);
    EXPECT_EQ(attr(value)->writeTo(&stream, &context), 0);
    return stream.str();
}

template <typename T>
std::string keyed(T const& value)
{
    return written(value, Format::Keyed, true);
}

// What an attribute that held `before` holds after it has read the text, with the status.
template <typename T>
std::pair<T, int> readBack(T const& before, std::string const& text, Format format = Format::Keyed)
{
    auto const attribute = attr(before);
    std::istringstream stream(text);
    ReadContext context(format);
    int const status = attribute->readFrom(&stream, &context);
    return {attribute->getValue(), status};
}

// Writing

TEST(AttrWriting, TheKeyedFormHasTheKeywordOfToken3)
{
    EXPECT_EQ(keyed(true), "value true;\n");
    EXPECT_EQ(keyed(-7), "value -7;\n");
    EXPECT_EQ(keyed(0.1), "value 0.1;\n");
    EXPECT_EQ(keyed(String(L"a \"b\"\n")), "value \"a \\\"b\\\"\\n\";\n");
    EXPECT_EQ(keyed(String()), "value null;\n");
    EXPECT_EQ(keyed(StringList{L"a", String::NIL}), "value [\"a\", null];\n");
}

TEST(AttrWriting, Form1HasNoKeyword)
{
    EXPECT_EQ(written(true, Format::Bare, true), "true\n");
    EXPECT_EQ(written(-7, Format::Bare, true), "-7\n");
    EXPECT_EQ(written(0.1, Format::Bare, true), "0.1\n");
    EXPECT_EQ(written(String(L"a"), Format::Bare, true), "\"a\"\n");
    EXPECT_EQ(written(StringList{L"a"}, Format::Bare, true), "[\"a\"]\n");
}

TEST(AttrWriting, AnyOtherFormHasTheKeyword)
{
    EXPECT_EQ(written(5, Format{2}, true), "value 5;\n");
    EXPECT_EQ(written(0, Format{2}, false), "");
}

TEST(AttrWriting, Form1HasDefaultValuesInAnyCase)
{
    EXPECT_EQ(written(false, Format::Bare, false), "false\n");
    EXPECT_EQ(written(0, Format::Bare, false), "0\n");
    EXPECT_EQ(written(0.0, Format::Bare, false), "0\n");
}

TEST(AttrWriting, DefaultValuesAreLeftOutOnRequest)
{
    EXPECT_EQ(written(false, Format::Keyed, false), "");
    EXPECT_EQ(written(0, Format::Keyed, false), "");
    EXPECT_EQ(written(String::EMPTY, Format::Keyed, false), "");
    EXPECT_EQ(written(StringList(), Format::Keyed, false), "");
    EXPECT_EQ(written(true, Format::Keyed, false), "value true;\n");
    EXPECT_EQ(written(1, Format::Keyed, false), "value 1;\n");
    EXPECT_EQ(written(String::NIL, Format::Keyed, false), "value null;\n");
    EXPECT_EQ(keyed(false), "value false;\n");
    EXPECT_EQ(keyed(0), "value 0;\n");
    EXPECT_EQ(keyed(0.0), "value 0;\n");
}

TEST(AttrWriting, ADoubleOfZeroOrNaNCountsAsDefaultAndOneOfMinusOneHalfDoesNot)
{
    EXPECT_EQ(written(0.0, Format::Keyed, false), "");
    EXPECT_EQ(written(-0.0, Format::Keyed, false), "");
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN(), Format::Keyed, false), "");
    EXPECT_EQ(written(-0.5, Format::Keyed, false), "value -0.5;\n");
    EXPECT_EQ(written(std::numeric_limits<double>::denorm_min(), Format::Keyed, false), "value 5e-324;\n");
}

TEST(AttrWriting, ANullContextGives27AndWritesNothing)
{
    std::ostringstream stream;
    EXPECT_EQ(attr(5)->writeTo(&stream, nullptr), 27);
    EXPECT_EQ(attr(String(L"a"))->writeTo(&stream, nullptr), 27);
    EXPECT_EQ(stream.str(), "");
}

TEST(AttrWriting, AStreamThatIsNotCleanGives18)
{
    std::ostringstream stream;
    stream.setstate(std::ios::failbit);
    WriteContext keyedContext;
    WriteContext bareContext(Format::Bare);
    EXPECT_EQ(attr(5)->writeTo(&stream, &keyedContext), 18);
    EXPECT_EQ(attr(5)->writeTo(&stream, &bareContext), 18);
    EXPECT_EQ(attr(5)->writeTo(nullptr, &keyedContext), 18);
    WriteContext withoutDefaults(Format::Keyed, false);
    EXPECT_EQ(attr(0)->writeTo(&stream, &withoutDefaults), 18); // also if there is nothing to write
}

// Reading

TEST(AttrReading, TakesTheValueOfItsKeyword)
{
    EXPECT_EQ(readBack(false, "value true;"), std::pair(true, 0));
    EXPECT_EQ(readBack(1, "value -7;"), std::pair(-7, 0));
    EXPECT_EQ(readBack(1.0, "value 0.1;"), std::pair(0.1, 0));
    EXPECT_EQ(readBack(String(L"x"), "value \"a\";"), std::pair(String(L"a"), 0));
    EXPECT_EQ(readBack(StringList{L"x"}, "value [\"a\", null];"), std::pair(StringList{L"a", String()}, 0));
}

TEST(AttrReading, TakesTheValueOfForm1)
{
    EXPECT_EQ(readBack(false, "true\n", Format::Bare), std::pair(true, 0));
    EXPECT_EQ(readBack(1, "-7\n", Format::Bare), std::pair(-7, 0));
}

TEST(AttrReading, ABlockWithoutAValueResetsTheAttribute)
{
    EXPECT_EQ(readBack(true, ""), std::pair(false, 0));
    EXPECT_EQ(readBack(5, ""), std::pair(0, 0));
    EXPECT_EQ(readBack(5, "unit \"m\";"), std::pair(0, 23));
    EXPECT_EQ(readBack(0.5, "}"), std::pair(0.0, 0));
    EXPECT_EQ(readBack(String(L"x"), ""), std::pair(String::EMPTY, 0));
    EXPECT_EQ(readBack(5, "", Format::Bare), std::pair(0, 0));
}

TEST(AttrReading, TheLastValueCounts)
{
    EXPECT_EQ(readBack(0, "value 1; value 2;"), std::pair(2, 0));
}

TEST(AttrReading, UnknownKeywordsAreSkippedWithAToleratedStatus)
{
    EXPECT_EQ(readBack(0, "unit \"m\"; value 2; range 0 { low 1; high 9; } value 3;"), std::pair(3, 23));
}

TEST(AttrReading, AKeywordThatOnlyBeginsLikeTheEndOfABlockIsUnknown)
{
    EXPECT_EQ(readBack(0, "\"}x\" 1; value 2;"), std::pair(2, 23));
}

TEST(AttrReading, StopsAtTheEndOfItsBlockAndPassesItToTheEnclosingReader)
{
    std::istringstream stream("first { value 1; } second { value 2; }");
    ReadContext context;
    oV::ReadFromScope const scope(&stream, &context);
    oV::ModelInFormat& in = scope.getImf();
    auto const attribute = attr(0);
    ASSERT_EQ(in.getKeyword(), L"first");
    ASSERT_TRUE(in.startBlock());
    EXPECT_EQ(attribute->readFrom(&stream, &context), 0);
    EXPECT_EQ(attribute->getValue(), 1);
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"second");
    ASSERT_TRUE(in.startBlock());
    EXPECT_EQ(attribute->readFrom(&stream, &context), 0);
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_TRUE(in.getKeyword().isNil());
}

TEST(AttrReading, AFailureGivesItsStatusAndLeavesTheValue)
{
    EXPECT_EQ(readBack(5, "value true;"), std::pair(5, StatusCode::wrongKind));
    EXPECT_EQ(readBack(5, "value 99999999999;"), std::pair(5, StatusCode::outOfRange));
    EXPECT_EQ(readBack(5, "value 7"), std::pair(7, StatusCode::unexpectedEnd)); // the value itself is whole
    EXPECT_EQ(readBack(5, "unit"), std::pair(5, StatusCode::unexpectedEnd));
    EXPECT_EQ(readBack(5, "= 7;"), std::pair(5, StatusCode::syntaxError));
    EXPECT_EQ(attr(5)->readFrom(nullptr, nullptr), StatusCode::readFailed);
}

TEST(AttrReading, ANullContextMeansTheKeyedForm)
{
    auto const attribute = attr(0);
    std::istringstream stream("value 7;");
    EXPECT_EQ(attribute->readFrom(&stream, nullptr), 0);
    EXPECT_EQ(attribute->getValue(), 7);
}

TEST(AttrReading, ReadValueFromReadsOneValueAndLeavesItOnFailure)
{
    auto const attribute = attr(5);
    std::istringstream stream("7 true");
    ReadContext context(Format::Bare);
    oV::ReadFromScope const scope(&stream, &context);
    attribute->readValueFrom(&stream, &context);
    EXPECT_EQ(attribute->getValue(), 7);
    attribute->readValueFrom(&stream, &context);
    EXPECT_EQ(attribute->getValue(), 7);
    EXPECT_EQ(scope.getImf().status(), StatusCode::wrongKind);
}

// The rule of the kept status

TEST(StatusToKeep, FollowsItsRule)
{
    struct Row
    {
        int kept;
        int next;
        int expected;
    };
    for (Row const& row : {Row{0, 0, 0},
                           Row{0, 23, 23},
                           Row{0, 5, 5},
                           Row{0, 1, 1},
                           Row{1, 0, 1}, // not tolerated: stays
                           Row{1, 23, 1},
                           Row{1, 5, 1},
                           Row{23, 0, 23},
                           Row{23, 5, 5},
                           Row{23, 24, 24},
                           Row{24, 23, 23},
                           Row{24, 0, 24},
                           Row{24, 280, 280},
                           Row{5, 23, 5},
                           Row{5, 12, 5},
                           Row{280, 1, 280}})
    {
        EXPECT_EQ(StatusCode::keep(row.kept, row.next), row.expected) << row.kept << ", " << row.next;
    }
}

TEST(StatusToKeep, TheToleratedCodesAreThe27)
{
    std::vector<int> const codes = {0,  5,  12,  23,  24,  30,  31,  34,  42,  43,  50,  51,  52, 54,
                                    57, 87, 122, 124, 162, 209, 216, 268, 269, 274, 277, 279, 280};
    ASSERT_EQ(codes.size(), 27U);
    std::vector<int> found;
    for (int code = -10; code < 1000; ++code) {
        if (StatusCode::isTolerated(code)) {
            found.push_back(code);
        }
    }
    EXPECT_EQ(found, codes);
}

// Round trips

template <typename T>
void expectRoundTrip(std::vector<T> const& values)
{
    for (T const& value : values) {
        for (Format const format : {Format::Keyed, Format::Bare}) {
            auto const [back, status] = readBack(T{}, written(value, format, true), format);
            EXPECT_EQ(status, 0);
            EXPECT_EQ(back, value);
        }
    }
}

TEST(AttrRoundTrip, EveryValueComesBack)
{
    expectRoundTrip<bool>({true}); // the list of bool has no references
    expectRoundTrip<int>({0, 1, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()});
    expectRoundTrip<String>({String::NIL,
                             String::EMPTY,
                             L" ",
                             L"\"",
                             L"\\",
                             L"\n\r\t",
                             L"}",
                             L"null",
                             L"\U0001F600 \u00e4",
                             String::fromUtf16(u"\xD800 lone"),
                             String::fromUtf16(std::u16string_view(u"a\0b", 3))});
    expectRoundTrip<StringList>({{}, {String::EMPTY}, {String::NIL}, {L"a", L"b,", L"]"}});
}

TEST(AttrRoundTrip, DoublesComeBackBitForBit)
{
    using Limits = std::numeric_limits<double>;
    for (double const value : {0.0,
                               -0.0,
                               0.1,
                               -0.5,
                               1e22,
                               Limits::min(),
                               Limits::denorm_min(),
                               Limits::max(),
                               Limits::infinity(),
                               -Limits::infinity(),
                               Limits::quiet_NaN(),
                               std::bit_cast<double>(std::uint64_t{0xFFF8000000000001})})
    {
        for (Format const format : {Format::Keyed, Format::Bare}) {
            double const back = readBack(7.0, written(value, format, true), format).first;
            EXPECT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value)) << value;
        }
    }
}

} // namespace
