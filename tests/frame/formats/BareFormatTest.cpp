#include "tests/support/ModelTexts.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelFormat.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::ModelFormat;
using namespace support;
namespace StatusCode = oV::StatusCode;

} // namespace

TEST(BareFormat, HasTheValueOne)
{
    EXPECT_EQ(static_cast<int>(ModelFormat::Format::Bare), 1);
    EXPECT_EQ(ModelFormat::END_OF_BLOCK, L'}');
}

TEST(BareFormat, WritesValuesOnLinesWithoutKeywords)
{
    NewText text(bare);
    text.out.startValue(L"attribute");
    put(text.out, String(L"Title"));
    text.out.startBlock();
    text.out.startValue(L"value");
    put(text.out, 3);
    text.out.endValue();
    text.out.startValue(L"value");
    put(text.out, std::vector<String>{L"a", L"b"});
    text.out.endValue();
    text.out.endBlock();
    EXPECT_EQ(text.text(), "\"Title\"\n{\n3\n[\"a\", \"b\"]\n}\n");
}

TEST(BareFormat, DoesNotIndentBlocksInBlocks)
{
    NewText text(bare);
    text.out.startBlock();
    text.out.startBlock();
    text.out.endBlock();
    text.out.endBlock();
    EXPECT_EQ(text.text(), "{\n{\n}\n}\n");
}

TEST(BareFormat, ReadsValuesAndBlocksInTheirOrder)
{
    OpenText open("\"Title\"\n{\n3\n[\"a\", \"b\"]\n}\ntrue", bare);
    EXPECT_EQ(get<String>(open.in), L"Title");
    EXPECT_FALSE(open.in.hasValue());
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_TRUE(open.in.hasValue());
    EXPECT_EQ(get<int>(open.in), 3);
    EXPECT_EQ(get<std::vector<String>>(open.in), (std::vector<String>{L"a", L"b"}));
    EXPECT_FALSE(open.in.hasValue());
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
    open.in.nextKeyword();
    EXPECT_TRUE(get<bool>(open.in));
    EXPECT_FALSE(open.in.hasValue());
    EXPECT_EQ(open.in.status(), StatusCode::ok);
}

TEST(BareFormat, AScopeFindsTheKeywordOfItsValueOnce)
{
    OpenText open("3\n4\n", bare);
    EXPECT_EQ(open.in.getKeyword(), L"value");
    EXPECT_EQ(open.in.getKeyword(), L"value");
    EXPECT_EQ(get<int>(open.in), 3);
    EXPECT_EQ(open.in.getKeyword(), L"value");
    open.in.nextKeyword();
    EXPECT_TRUE(open.in.getKeyword().isNil());
    EXPECT_EQ(get<int>(open.in), 4);
}

TEST(BareFormat, ScopesOneAfterTheOtherFindTheirValues)
{
    OpenText open("3\n4\n", bare);
    for (int const expected : {3, 4}) {
        oV::ReadFromScope const inner(&open.stream, &open.context);
        EXPECT_EQ(inner.getImf().getKeyword(), L"value");
        EXPECT_EQ(get<int>(inner.getImf()), expected);
        inner.getImf().nextKeyword();
        EXPECT_TRUE(inner.getImf().getKeyword().isNil());
    }
    EXPECT_TRUE(open.in.getKeyword().isNil());
    EXPECT_EQ(open.in.status(), StatusCode::ok);
}

TEST(BareFormat, AValueThatIsNotReadIsSkipped)
{
    OpenText open("[\"a\"]\n4\n", bare);
    EXPECT_EQ(open.in.getKeyword(), L"value");
    open.in.nextKeyword();
    EXPECT_EQ(get<int>(open.in), 4);
}

TEST(BareFormat, AnEmptyTextHasNoKeyword)
{
    OpenText open(" \n", bare);
    EXPECT_TRUE(open.in.getKeyword().isNil());
    EXPECT_EQ(open.in.status(), StatusCode::ok);
}

TEST(BareFormat, AnEmptyBlockEndsAtOnce)
{
    OpenText open("{\n}\n7\n", bare);
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_TRUE(isEnd(open.in.getKeyword()));
    open.in.nextKeyword();
    EXPECT_EQ(get<int>(open.in), 7);
}

TEST(BareFormat, ABlockThatDoesNotEndFails)
{
    OpenText open("{\n3\n", bare);
    ASSERT_TRUE(open.in.startBlock());
    EXPECT_EQ(get<int>(open.in), 3);
    EXPECT_EQ(open.in.getKeyword(), String::EMPTY);
    EXPECT_FALSE(open.in.getKeyword().isNil());
    EXPECT_EQ(open.in.status(), StatusCode::unexpectedEnd);
}

TEST(BareFormat, WhatIsNoItemCannotBeSkipped)
{
    OpenText open("; 3", bare);
    EXPECT_EQ(open.in.getKeyword(), L"value");
    open.in.nextKeyword();
    EXPECT_EQ(open.in.status(), StatusCode::syntaxError);
}

TEST(BareFormat, BlocksThatAreSkippedNestAHundredTimesAndNotOnceMore)
{
    for (std::size_t const count : {100U, 101U}) {
        OpenText open(std::string(count, '{') + std::string(count, '}'), bare);
        EXPECT_EQ(open.in.getKeyword(), L"value");
        open.in.nextKeyword();
        EXPECT_EQ(open.in.status(), count == 100 ? StatusCode::ok : StatusCode::tooDeep);
    }
}

TEST(BareFormat, ABlockWhereThereIsNoneFails)
{
    OpenText open("3", bare);
    EXPECT_FALSE(open.in.hasBlock());
    EXPECT_FALSE(open.in.startBlock());
    EXPECT_EQ(open.in.status(), StatusCode::wrongKind);
}
