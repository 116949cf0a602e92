#include "tests/support/ModelTexts.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/formats/ModelFormat.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::InternalErrorException;
using oV::ModelFormat;
using oV::ModelInFormat;
using oV::ModelOutFormat;
using support::get;
using support::isEnd;
using support::NewText;
using support::OpenText;
using support::put;
using Texts = std::vector<String>;
namespace StatusCode = oV::StatusCode;

constexpr char const* exampleText = "version 2;\n"
                                    "attribute \"Title\" {\n"
                                    "    value [\"a\", null, \"\"];\n"
                                    "    \"more values\" -0.5 true {\n"
                                    "    }\n"
                                    "}\n";

// Walks the whole text and reads nothing; the status.
int statusOfWalk(std::string const& text)
{
    OpenText open(text);
    for (String keyword = open.in.getKeyword(); !keyword.text().empty() && !isEnd(keyword);
         keyword = open.in.getKeyword())
    {
        open.in.nextKeyword();
    }
    return open.in.status();
}

std::string keywordText(String const& keyword)
{
    NewText text;
    text.out.startValue(keyword);
    text.out.endValue();
    return text.text();
}

} // namespace

TEST(KeyedFormat, WritesStatementsOnLinesAndIndentsBlocks)
{
    NewText text;
    ModelOutFormat& out = text.out;
    out.startValue(L"version");
    put(out, 2);
    out.endValue();
    out.startValue(L"attribute");
    put(out, String(L"Title"));
    out.startBlock();
    out.startValue(L"value");
    put(out, Texts{L"a", String::NIL, L""});
    out.endValue();
    out.startValue(L"more values");
    put(out, -0.5);
    put(out, true);
    out.startBlock();
    out.endBlock();
    out.endBlock();
    EXPECT_EQ(text.text(), exampleText);
    EXPECT_TRUE(out.good());
}

TEST(KeyedFormat, WalksKeywordsValuesAndBlocks)
{
    OpenText open(exampleText);
    ModelInFormat& in = open.in;
    EXPECT_EQ(in.getKeyword(), L"version");
    EXPECT_EQ(get<int>(in), 2);
    EXPECT_EQ(in.lineNumber(), 1U);
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"attribute");
    EXPECT_EQ(in.lineNumber(), 2U);
    EXPECT_EQ(get<String>(in), L"Title");
    EXPECT_TRUE(in.hasBlock());
    ASSERT_TRUE(in.startBlock());
    EXPECT_EQ(in.getKeyword(), L"value");
    EXPECT_EQ(get<Texts>(in), (Texts{L"a", String::NIL, L""}));
    EXPECT_FALSE(in.hasBlock());
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"more values");
    EXPECT_EQ(get<double>(in), -0.5);
    EXPECT_TRUE(in.hasValue());
    EXPECT_TRUE(get<bool>(in));
    EXPECT_FALSE(in.hasValue());
    ASSERT_TRUE(in.startBlock());
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_TRUE(in.getKeyword().isNil());
    EXPECT_EQ(in.status(), StatusCode::ok);
    EXPECT_EQ(in.lineNumber(), 7U);
}

TEST(KeyedFormat, TheKeywordStaysUntilTheNextOne)
{
    OpenText open("a 1; b;");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(get<int>(open.in), 1);
    EXPECT_EQ(open.in.getKeyword(), L"a");
    open.in.nextKeyword();
    open.in.nextKeyword(); // there is no current keyword, so nothing is skipped
    EXPECT_EQ(open.in.getKeyword(), L"b");
}

TEST(KeyedFormat, NeedsNoBlankSpaceBetweenTokensThatAreNotWords)
{
    OpenText open("a\"x\"[\"y\"]{b 1;c{}}d;");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(get<String>(open.in), L"x");
    EXPECT_EQ(get<Texts>(open.in), Texts{L"y"});
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(open.in.getKeyword(), L"b");
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"c");
    open.in.nextKeyword();
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"d");
}

TEST(KeyedFormat, TakesBlankSpaceOfAnyKind)
{
    OpenText open(" \t\r\n a\t1\r\n;\n");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(get<int>(open.in), 1);
    open.in.nextKeyword();
    EXPECT_TRUE(open.in.getKeyword().isNil());
}

TEST(KeyedFormat, WhatIsNotReadIsSkipped)
{
    OpenText open("a 1 \"x;}\" [1, true, \"}\", null] nan:fff8000000000000 { b { c \"}\"; } d; } e 7;");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(get<int>(open.in), 1);
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"e");
    EXPECT_EQ(get<int>(open.in), 7);
    EXPECT_EQ(open.in.status(), StatusCode::ok);
}

TEST(KeyedFormat, StartingABlockSkipsTheValuesBeforeIt)
{
    OpenText open("a 1 \"x\" { b 2; }");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(open.in.getKeyword(), L"b");
}

TEST(KeyedFormat, AnEndOfBlockWithoutABlockIsAKeyword)
{
    OpenText open("} a 1;");
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(open.in.status(), StatusCode::ok);
}

TEST(KeyedFormat, AnEndOfBlockWithoutABlockDoesNotCountForTheNextOne)
{
    OpenText open("} a {");
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
    open.in.nextKeyword();
    EXPECT_EQ(open.in.getKeyword(), L"a");
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(open.in.getKeyword(), String::EMPTY);
    EXPECT_EQ(open.in.status(), StatusCode::unexpectedEnd);
}

TEST(KeyedFormat, AnEmptyTextHasTheNullKeyword)
{
    EXPECT_TRUE(OpenText("").in.getKeyword().isNil());
    EXPECT_TRUE(OpenText(" \n").in.getKeyword().isNil());
    EXPECT_EQ(statusOfWalk(""), StatusCode::ok);
}

TEST(KeyedFormat, KeywordsThatAreNoWordsAreQuoted)
{
    EXPECT_EQ(keywordText(L"value"), "value;\n");
    EXPECT_EQ(keywordText(L"_a9_Z"), "_a9_Z;\n");
    EXPECT_EQ(keywordText(L"zA0"), "zA0;\n");
    EXPECT_EQ(keywordText(L"9a"), "\"9a\";\n");
    EXPECT_EQ(keywordText(L"a.b"), "\"a.b\";\n");
    EXPECT_EQ(keywordText(L" "), "\" \";\n");
    EXPECT_EQ(keywordText(L"}}"), "\"}}\";\n");
    EXPECT_EQ(keywordText(L"{"), "\"{\";\n");
    EXPECT_EQ(keywordText(L"a\"\n"), "\"a\\\"\\n\";\n");
    EXPECT_EQ(keywordText(String::fromUtf16(u"\u00E9")), "\"\xC3\xA9\";\n");
}

TEST(KeyedFormat, KeywordsOfAnyTextComeBack)
{
    for (String const& keyword : {String(L"a.b"),
                                  String(L"null"),
                                  String(L";"),
                                  String(L"}}"),
                                  String(L" x "),
                                  String::fromUtf16(std::u16string{0xD800})})
    {
        OpenText open(keywordText(keyword));
        EXPECT_EQ(open.in.getKeyword(), keyword);
        open.in.nextKeyword();
        EXPECT_TRUE(open.in.getKeyword().isNil());
    }
}

TEST(KeyedFormat, WhatIsNoKeywordIsNotWritten)
{
    NewText text;
    EXPECT_THROW(text.out.startValue(String::NIL), InternalErrorException);
    EXPECT_THROW(text.out.startValue(String::EMPTY), InternalErrorException);
    EXPECT_THROW(text.out.startValue(L"}"), InternalErrorException);
    EXPECT_EQ(text.text(), "");
}

TEST(KeyedFormat, WhatIsNoKeywordIsNotRead)
{
    for (char const* const text :
         {"\"\";", "\"}\";", "9;", "-a;", ".a;", ";", "{", "[", "null.x;", "a;;", "a; #"})
    {
        EXPECT_EQ(statusOfWalk(text), StatusCode::syntaxError) << text;
    }
}

TEST(KeyedFormat, WhatIsNoValueCannotBeSkipped)
{
    for (char const* const text :
         {"a b;", "a -;", "a 1x;", "a nan:1;", "a [b];", "a [[]];", "a [1 2];", "a @;"}) {
        EXPECT_EQ(statusOfWalk(text), StatusCode::syntaxError) << text;
    }
    EXPECT_EQ(statusOfWalk("a 99999999999 1e999 -inf nan:7ff0000000000001 null true [false];"),
              StatusCode::ok);
}

TEST(KeyedFormat, AStatementThatDoesNotEndFails)
{
    for (char const* const text :
         {"a", "a 1", "a tru", "a 1 \"x", "a [", "a {", "a { b", "a { b;", "a { b; } c", "\"a"})
    {
        EXPECT_EQ(statusOfWalk(text), StatusCode::unexpectedEnd) << text;
    }
    for (char const* const text : {"a }", "a { b }", "a { b 1 }", "a { ; }", "a { { } }", "a { \"\"; }"}) {
        EXPECT_EQ(statusOfWalk(text), StatusCode::syntaxError) << text;
    }
}

TEST(KeyedFormat, ATextThatEndsBeforeABlockFailsWhereTheBlockIsEntered)
{
    OpenText open("a 1");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_FALSE(open.in.startBlock());
    EXPECT_EQ(open.in.status(), StatusCode::unexpectedEnd);
}

TEST(KeyedFormat, ABlockThatDoesNotEndFailsWhereItIsRead)
{
    OpenText open("a { b 1;");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(open.in.getKeyword(), L"b");
    open.in.nextKeyword();
    EXPECT_FALSE(open.in.getKeyword().isNil());
    EXPECT_EQ(open.in.status(), StatusCode::unexpectedEnd);
}

TEST(KeyedFormat, AfterAFailureTheKeywordIsEmptyAndNothingIsRead)
{
    OpenText open("a x; b 1;");
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(open.in.unknownKeyword(), StatusCode::unknownKeyword);
    EXPECT_FALSE(oV::DataInFormat<int>(open.in).get().has_value());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(open.in.getKeyword().isNil());
        EXPECT_EQ(open.in.getKeyword(), String::EMPTY);
        open.in.nextKeyword();
    }
    EXPECT_FALSE(open.in.hasValue());
    EXPECT_FALSE(open.in.hasBlock());
    EXPECT_FALSE(open.in.startBlock());
    EXPECT_FALSE(open.in.keepRest().has_value());
    EXPECT_FALSE(oV::DataInFormat<String>(open.in).get().has_value());
    EXPECT_EQ(open.in.status(), StatusCode::wrongKind);
    EXPECT_EQ(open.in.unknownKeyword(), StatusCode::wrongKind);
}

TEST(KeyedFormat, AReaderMayFailByItself)
{
    OpenText open("a 1;");
    open.in.fail(StatusCode::outOfRange);
    open.in.fail(StatusCode::syntaxError);
    EXPECT_EQ(open.in.status(), StatusCode::outOfRange);
    EXPECT_EQ(open.in.getKeyword(), String::EMPTY);
}

// Readers go on after a tolerated status, and would never end.
TEST(KeyedFormat, AFailureWithAToleratedStatusCountsAsASyntaxError)
{
    for (int const status : {0, 5, StatusCode::unknownKeyword}) {
        OpenText open("a 1;");
        open.in.fail(status);
        EXPECT_EQ(open.in.status(), StatusCode::syntaxError);
    }
}

TEST(KeyedFormat, BlocksNestAHundredTimesAndNotOnceMore)
{
    auto const nested = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "a {";
        }
        return text + std::string(static_cast<std::size_t>(count), '}');
    };
    EXPECT_EQ(statusOfWalk(nested(100)), StatusCode::ok);
    EXPECT_EQ(statusOfWalk(nested(101)), StatusCode::tooDeep);
    EXPECT_EQ(statusOfWalk(nested(1000000)), StatusCode::tooDeep);

    OpenText open(nested(101));
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(open.in.getKeyword(), L"a");
        ASSERT_TRUE(open.in.startBlock());
    }
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_FALSE(open.in.startBlock());
    EXPECT_EQ(open.in.status(), StatusCode::tooDeep);
}

TEST(KeyedFormat, BlocksInBlocksThatWereEnteredCountWhenSkipped)
{
    std::string text;
    for (int i = 0; i < 101; ++i) {
        text += "a {";
    }
    OpenText open(text + std::string(101, '}'));
    EXPECT_EQ(open.in.getKeyword(), L"a");
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(open.in.getKeyword(), L"a");
    open.in.nextKeyword();
    EXPECT_EQ(open.in.status(), StatusCode::tooDeep);
}

TEST(KeyedFormat, MoreThanAHundredBlocksAreNotWritten)
{
    NewText text;
    for (int i = 0; i < ModelFormat::maxDepth; ++i) {
        text.out.startValue(L"a");
        text.out.startBlock();
    }
    EXPECT_THROW(text.out.startBlock(), InternalErrorException);
    for (int i = 0; i < ModelFormat::maxDepth; ++i) {
        text.out.endBlock();
    }
    EXPECT_THROW(text.out.endBlock(), InternalErrorException);
    EXPECT_EQ(statusOfWalk(text.text()), StatusCode::ok);
}

TEST(KeyedFormat, EveryCutOfATextIsRefusedOrEndsBetweenStatements)
{
    std::string const text = exampleText;
    for (std::size_t size = 0; size < text.size(); ++size) {
        int const status = statusOfWalk(text.substr(0, size));
        bool const endsBetweenStatements = size == 0 || size == 10 || size == 11 || size == text.size() - 1;
        EXPECT_EQ(status, endsBetweenStatements ? StatusCode::ok : StatusCode::unexpectedEnd) << size;
    }
}
