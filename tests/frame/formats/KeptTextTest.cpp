#include "tests/support/ModelTexts.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeptText.h>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

namespace
{

using Bv_1_1::String;
using oV::KeptText;
using oV::ModelFormat;
using namespace support;
namespace StatusCode = oV::StatusCode;

constexpr ModelFormat::Format keyed = ModelFormat::Format::Keyed;

// The kept text of the first statement or item.
KeptText keptOf(std::string const& text, ModelFormat::Format format)
{
    OpenText open(text, format);
    EXPECT_FALSE(open.in.getKeyword().isNil());
    std::optional<KeptText> const kept = open.in.keepRest();
    EXPECT_EQ(open.in.status(), StatusCode::ok);
    return kept.value();
}

// The first statement with its kept rest in another form.
std::string converted(std::string const& text, ModelFormat::Format from, ModelFormat::Format to)
{
    return keptOf(text, from).inFormat(to).text();
}

} // namespace

TEST(KeptText, IsTheRestOfAStatementByteForByte)
{
    OpenText open("a \"name\"  [1,\n\ttrue]{ b  \"}\\u00e9\" ;\r\n c{ }} d 4;");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(get<String>(open.in), L"name");
    std::optional<KeptText> const kept = open.in.keepRest();
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(kept->text(), "[1,\n\ttrue]{ b  \"}\\u00e9\" ;\r\n c{ }}");
    EXPECT_EQ(kept->format(), keyed);
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"d");
    EXPECT_EQ(get<int>(open.in), 4);
}

TEST(KeptText, OfAStatementWithoutValuesIsItsEnd)
{
    EXPECT_EQ(keptOf("a ;", keyed).text(), ";");
    EXPECT_EQ(keptOf("a 1 ;", keyed).text(), "1 ;");
    EXPECT_EQ(keptOf("a {\n}", keyed).text(), "{\n}");
}

TEST(KeptText, OfTheBareFormIsOneItem)
{
    EXPECT_EQ(keptOf(" 3 4", bare).text(), "3");
    EXPECT_EQ(keptOf("{ 3 { \"}\" } }\n4", bare).text(), "{ 3 { \"}\" } }");
    OpenText open("3\n{\n4\n}\n5\n", bare);
    EXPECT_EQ(get<int>(open.in), 3);
    EXPECT_EQ(open.in.keepRest().value().text(), "{\n4\n}");
    EXPECT_EQ(get<int>(open.in), 5);
}

TEST(KeptText, IsWrittenAgainUnchanged)
{
    std::string const text = "first 1;\n"
                             "attribute \"new\" \"Attr<vec3>\" {\n"
                             "    value 1 2 3;\n"
                             "    unit \"m\" {\n"
                             "        symbol \"\\u0007\";\n"
                             "    }\n"
                             "}\n"
                             "flag;\n"
                             "last \"x\" true;\n";
    OpenText open(text);
    NewText again;
    for (String keyword = open.in.getKeyword(); !keyword.isNil(); keyword = open.in.getKeyword()) {
        again.out.startValue(keyword);
        again.out.putKept(open.in.keepRest().value());
        open.in.nextKeyword();
    }
    EXPECT_EQ(again.text(), text);
}

TEST(KeptText, OfABareTextIsWrittenAgainUnchanged)
{
    std::string const text = "\"new\"\n{\n1\n2\n}\n[\"a\"]\n";
    OpenText open(text, bare);
    NewText again(bare);
    while (open.in.hasValue() || open.in.hasBlock()) {
        again.out.putKept(open.in.keepRest().value());
    }
    EXPECT_EQ(again.text(), text);
}

TEST(KeptText, CanBeReadLater)
{
    KeptText const kept = keptOf("a { value 3; }", keyed);
    OpenText open(kept.text(), kept.format());
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(open.in.getKeyword(), L"value");
    EXPECT_EQ(get<int>(open.in), 3);
    open.in.nextKeyword();
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
}

TEST(KeptText, ABlockKeepsItsValueBetweenTheForms)
{
    EXPECT_EQ(converted("a { unit \"m\"; value 3; more { value 5; } }", keyed, bare), "{\n3\n}");
    EXPECT_EQ(converted("a { value [\"x\", null] 4; }", keyed, bare), "{\n[\"x\", null]\n4\n}");
    EXPECT_EQ(converted("{ 3 }", bare, keyed), "{ value 3; }");
    EXPECT_EQ(converted("{\n\"a b\"\n4\n}", bare, keyed), "{ value \"a b\" 4; }");
}

TEST(KeptText, ABlockWithoutAValueIsEmptyInTheOtherForm)
{
    EXPECT_EQ(converted("a { }", keyed, bare), "{\n}");
    EXPECT_EQ(converted("a { unit \"m\"; }", keyed, bare), "{\n}");
    EXPECT_EQ(converted("{ }", bare, keyed), "{}");
}

TEST(KeptText, ValuesKeepTheirTextBetweenTheForms)
{
    EXPECT_EQ(converted("a \"x\";", keyed, bare), "\"x\"");
    EXPECT_EQ(converted("3", bare, keyed), "3;");
    EXPECT_EQ(converted("a { value 3; }", keyed, keyed), "{ value 3; }");
}

TEST(KeptText, IsOneItemInTheBareForm)
{
    EXPECT_EQ(converted("a;", keyed, bare), "{\n}");
    EXPECT_EQ(converted("a 1 \"x\";", keyed, bare), "{\n1\n\"x\"\n}");
}

TEST(KeptText, IsWrittenInTheOtherForm)
{
    NewText toBare(bare);
    toBare.out.startValue(L"attribute");
    put(toBare.out, String(L"new"));
    toBare.out.putKept(keptOf("a { value 3; }", keyed));
    EXPECT_EQ(toBare.text(), "\"new\"\n{\n3\n}\n");

    NewText toKeyed;
    toKeyed.out.startValue(L"attribute");
    put(toKeyed.out, String(L"new"));
    toKeyed.out.putKept(keptOf("{\n3\n}", bare));
    EXPECT_EQ(toKeyed.text(), "attribute \"new\" { value 3; }\n");
}

TEST(KeptText, OfADamagedStatementIsNothing)
{
    for (char const* const text : {"a", "a {", "a { b }", "a \"\xFF\";", "a [1,];"}) {
        OpenText open(text);
        EXPECT_EQ(open.in.getKeyword(), L"a");
        EXPECT_FALSE(open.in.keepRest().has_value()) << text;
        EXPECT_FALSE(StatusCode::isTolerated(open.in.status())) << text;
    }
    for (char const* const text : {"{", "{ {", "}", ";", "[1"}) {
        OpenText open(text, bare);
        EXPECT_FALSE(open.in.keepRest().has_value()) << text;
        EXPECT_FALSE(StatusCode::isTolerated(open.in.status())) << text;
    }
}

TEST(KeptText, NeedsACurrentStatementInTheKeyedForm)
{
    OpenText open("a 1; b 2; }");
    EXPECT_FALSE(open.in.keepRest().has_value());
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_TRUE(open.in.keepRest().has_value());
    EXPECT_FALSE(open.in.keepRest().has_value()); // the statement has been read completely
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"b");
    open.in.nextKeyword();
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
    EXPECT_FALSE(open.in.keepRest().has_value());
    EXPECT_EQ(open.in.status(), StatusCode::ok);
}
