#include "tests/support/ByteStrings.h"
#include "tests/support/ModelTexts.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelFormat.h>

#include <gtest/gtest.h>

#include <istream>
#include <memory>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

namespace
{

using Bv_1_1::String;
using oV::ModelFormat;
using oV::ModelInFormat;
using oV::ReadContext;
using oV::ReadFromScope;
using oV::WriteContext;
using oV::WriteToScope;
using support::bare;
using support::get;
using support::isEnd;
using support::OpenText;
using support::put;
namespace StatusCode = oV::StatusCode;

// Reads like an attribute of type int: the value of its block; the base class handles unknown keywords.
class IntReader
{
public:
    int value = -1;

    int readFrom(std::istream& stream, oV::ReadContextBase* context)
    {
        ReadFromScope const scope(&stream, context);
        ModelInFormat& in = scope.getImf();
        int kept = StatusCode::ok;
        bool found = false;
        String keyword = in.getKeyword();
        while (!keyword.isNil() && !isEnd(keyword)) {
            if (keyword == String(L"value")) {
                value = oV::DataInFormat<int>(in).get().value_or(value);
                found = true;
            } else {
                int const status = readUnknownFrom(stream, context);
                if (!StatusCode::isTolerated(status)) {
                    return status;
                }
                kept = StatusCode::keep(kept, status);
            }
            in.nextKeyword();
            keyword = in.getKeyword();
        }
        value = found ? value : 0;
        if (isEnd(in.getKeyword())) {
            in.setPropagateKeyword(in.getKeyword());
        }
        return kept;
    }

private:
    static int readUnknownFrom(std::istream& stream, oV::ReadContextBase* context)
    {
        ReadFromScope const scope(&stream, context);
        EXPECT_FALSE(scope.getImf().getKeyword().isNil());
        return scope.getImf().unknownKeyword();
    }
};

// Behaves like a file buffer whose device fails.
class ThrowingBuffer : public std::streambuf
{
public:
    /// A buffer that has this text.
    explicit ThrowingBuffer(std::string text = {}) : text_(std::move(text))
    {
        setg(text_.data(), text_.data(), text_.data() + text_.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("The device is gone"); }

private:
    std::string text_;
};

} // namespace

TEST(ReadFromScope, GivesTheFormatOfItsContextAndTheContext)
{
    std::istringstream stream("3");
    ReadContext context(bare);
    ReadFromScope const scope(&stream, &context);
    EXPECT_EQ(scope.getReadContext(), &context);
    EXPECT_EQ(scope.getImf().format(), bare);
    EXPECT_EQ(context.getFormat(), bare);
    EXPECT_EQ(ReadContext().getFormat(), ModelFormat::Format::Keyed);
}

TEST(ReadFromScope, ANullContextMeansTheKeyedForm)
{
    std::istringstream stream("a 3;");
    ReadFromScope const scope(&stream, nullptr);
    EXPECT_EQ(scope.getReadContext(), nullptr);
    EXPECT_EQ(scope.getImf().format(), ModelFormat::Format::Keyed);
    EXPECT_EQ(scope.getImf().getKeyword(), L"a");
}

TEST(ReadFromScope, AFormatWithoutANameIsReadAsTheKeyedForm)
{
    OpenText open("a 3;", static_cast<ModelFormat::Format>(7));
    EXPECT_EQ(open.in.getKeyword(), L"a");
    EXPECT_EQ(get<int>(open.in), 3);
}

TEST(ReadFromScope, OnTheSameStreamSharesPositionAndKeyword)
{
    OpenText outer("a 1 2 3;");
    EXPECT_EQ(outer.in.getKeyword(), L"a");
    EXPECT_EQ(get<int>(outer.in), 1);
    {
        ReadFromScope const inner(&outer.stream, &outer.context);
        EXPECT_EQ(&inner.getImf(), &outer.in);
        EXPECT_EQ(inner.getImf().getKeyword(), L"a");
        EXPECT_EQ(get<int>(inner.getImf()), 2);
    }
    EXPECT_EQ(outer.in.getKeyword(), L"a");
    EXPECT_EQ(get<int>(outer.in), 3);
}

TEST(ReadFromScope, OnAnotherStreamSharesNothing)
{
    OpenText first("a 1;");
    OpenText second("b 2;");
    EXPECT_EQ(first.in.getKeyword(), L"a");
    EXPECT_EQ(second.in.getKeyword(), L"b");
    ReadFromScope const inner(&first.stream, nullptr);
    EXPECT_EQ(&inner.getImf(), &first.in);
}

TEST(ReadFromScope, LeavesTheStreamAfterTheLastByteThatWasUsed)
{
    std::istringstream stream("a 1;b 2;\nrest");
    for (char const expected : {'a', 'b'}) {
        ReadFromScope const scope(&stream, nullptr);
        EXPECT_EQ(scope.getImf().getKeyword().text()[0], static_cast<char16_t>(expected));
        scope.getImf().nextKeyword();
    }
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, "");
    std::getline(stream, rest);
    EXPECT_EQ(rest, "rest");
}

TEST(ReadFromScope, WithoutAStreamFails)
{
    for (int i = 0; i < 2; ++i) {
        ReadFromScope const scope(nullptr, nullptr);
        ReadFromScope const inner(nullptr, nullptr);
        EXPECT_NE(&scope.getImf(), &inner.getImf());
        EXPECT_EQ(scope.getImf().status(), StatusCode::readFailed);
        EXPECT_EQ(scope.getImf().getKeyword(), String::EMPTY);
        EXPECT_FALSE(scope.getImf().getKeyword().isNil());
    }
}

TEST(ReadFromScope, OnAStreamThatHasFailedFails)
{
    std::istringstream stream("a 1;");
    stream.setstate(std::ios::failbit);
    EXPECT_EQ(ReadFromScope(&stream, nullptr).getImf().status(), StatusCode::readFailed);
    std::istream withoutBuffer(nullptr);
    EXPECT_EQ(ReadFromScope(&withoutBuffer, nullptr).getImf().status(), StatusCode::readFailed);
}

TEST(ReadFromScope, OnAStreamAtItsEndFindsTheNullKeyword)
{
    std::istringstream stream("x");
    std::string word;
    stream >> word;
    ASSERT_TRUE(stream.eof());
    ReadFromScope const scope(&stream, nullptr);
    EXPECT_TRUE(scope.getImf().getKeyword().isNil());
    EXPECT_EQ(scope.getImf().status(), StatusCode::ok);
}

TEST(ReadFromScope, ABufferThatThrowsIsAFailedRead)
{
    ThrowingBuffer buffer;
    std::istream stream(&buffer);
    ReadFromScope const scope(&stream, nullptr);
    EXPECT_EQ(scope.getImf().getKeyword(), String::EMPTY);
    EXPECT_EQ(scope.getImf().status(), StatusCode::readFailed);
}

TEST(ReadFromScope, ABufferThatThrowsInsideAValueGivesNoValue)
{
    ThrowingBuffer buffer("a 12");
    std::istream stream(&buffer);
    ReadFromScope const scope(&stream, nullptr);
    EXPECT_EQ(scope.getImf().getKeyword(), L"a");
    EXPECT_FALSE(oV::DataInFormat<int>(scope.getImf()).get().has_value());
    EXPECT_EQ(scope.getImf().status(), StatusCode::readFailed);
}

TEST(ReadFromScope, ScopesMayCloseInAnyOrder)
{
    std::istringstream stream("a 1;");
    auto outer = std::make_unique<ReadFromScope>(&stream, nullptr);
    auto inner = std::make_unique<ReadFromScope>(&stream, nullptr);
    outer.reset();
    EXPECT_EQ(inner->getImf().getKeyword(), L"a");
    ReadFromScope const third(&stream, nullptr);
    EXPECT_EQ(&third.getImf(), &inner->getImf());
}

TEST(ReadFromScope, AnEndOfBlockIsDoneWithUnlessItIsPropagated)
{
    for (bool const propagates : {false, true}) {
        OpenText outer("a { b; } c;");
        EXPECT_EQ(outer.in.getKeyword(), L"a");
        ASSERT_TRUE(outer.in.startBlock());
        {
            ReadFromScope const inner(&outer.stream, &outer.context);
            EXPECT_EQ(inner.getImf().getKeyword(), L"b");
            inner.getImf().nextKeyword();
            EXPECT_TRUE(isEnd(inner.getImf().getKeyword()));
            if (propagates) {
                inner.getImf().setPropagateKeyword(inner.getImf().getKeyword());
            }
        }
        EXPECT_EQ(outer.in.getKeyword(), String(propagates ? L"}" : L"c"));
    }
}

TEST(ReadFromScope, AnEndOfBlockThatWasThereBeforeStays)
{
    OpenText outer("}");
    EXPECT_TRUE(isEnd(outer.in.getKeyword()));
    {
        ReadFromScope const inner(&outer.stream, &outer.context);
        EXPECT_TRUE(isEnd(inner.getImf().getKeyword()));
    }
    EXPECT_TRUE(isEnd(outer.in.getKeyword()));
}

TEST(ReadFromScope, PropagatesThroughEachScope)
{
    OpenText outer("} c;");
    {
        ReadFromScope const middle(&outer.stream, &outer.context);
        {
            ReadFromScope const inner(&outer.stream, &outer.context);
            inner.getImf().setPropagateKeyword(inner.getImf().getKeyword());
        }
        EXPECT_TRUE(isEnd(outer.in.getKeyword()));
        middle.getImf().setPropagateKeyword(middle.getImf().getKeyword());
    }
    EXPECT_TRUE(isEnd(outer.in.getKeyword()));
    outer.in.nextKeyword();
    EXPECT_EQ(outer.in.getKeyword(), L"c");
}

TEST(ReadFromScope, PropagatesAnyOtherKeyword)
{
    OpenText outer("a 1; b 2;");
    EXPECT_EQ(outer.in.getKeyword(), L"a");
    {
        ReadFromScope const inner(&outer.stream, &outer.context);
        inner.getImf().setPropagateKeyword(L"other");
    }
    EXPECT_EQ(outer.in.getKeyword(), L"other");
    outer.in.nextKeyword();
    EXPECT_EQ(outer.in.getKeyword(), L"b");
}

TEST(ReadFromScope, PropagatesAKeywordThatWasFinished)
{
    OpenText outer("a 1; b 2;");
    {
        ReadFromScope const inner(&outer.stream, &outer.context);
        EXPECT_EQ(inner.getImf().getKeyword(), L"a");
        inner.getImf().nextKeyword();
        inner.getImf().setPropagateKeyword(L"a");
    }
    EXPECT_EQ(outer.in.getKeyword(), L"a");
    outer.in.nextKeyword();
    EXPECT_EQ(outer.in.getKeyword(), L"b");
}

TEST(ReadFromScope, NextKeywordCancelsAPropagation)
{
    OpenText outer("a { } b { } c;");
    EXPECT_EQ(outer.in.getKeyword(), L"a");
    ASSERT_TRUE(outer.in.startBlock());
    {
        ReadFromScope const inner(&outer.stream, &outer.context);
        EXPECT_TRUE(isEnd(inner.getImf().getKeyword()));
        inner.getImf().setPropagateKeyword(inner.getImf().getKeyword());
        inner.getImf().nextKeyword();
        EXPECT_EQ(inner.getImf().getKeyword(), L"b");
        ASSERT_TRUE(inner.getImf().startBlock());
        EXPECT_TRUE(isEnd(inner.getImf().getKeyword()));
    }
    EXPECT_EQ(outer.in.getKeyword(), L"c"); // the block that ended in the inner scope is finished
}

TEST(ReadFromScope, ReadsAnObjectThatReadsItself)
{
    std::istringstream stream("value 3;");
    IntReader reader;
    EXPECT_EQ(reader.readFrom(stream, nullptr), StatusCode::ok);
    EXPECT_EQ(reader.value, 3);
}

TEST(ReadFromScope, ReadsAnObjectUpToTheEndOfItsBlock)
{
    std::istringstream stream("unknown { x 1; } value 3; } value 4;");
    IntReader reader;
    EXPECT_EQ(reader.readFrom(stream, nullptr), StatusCode::unknownKeyword);
    EXPECT_EQ(reader.value, 3);
    EXPECT_EQ(reader.readFrom(stream, nullptr), StatusCode::ok);
    EXPECT_EQ(reader.value, 4);
}

TEST(ReadFromScope, ReadsObjectsInsideAnObject)
{
    OpenText outer(
        "number \"a\" { value 3; } skipped { value 9; } number \"b\" { } number \"c\" { new 1; value 5; }");
    std::string found;
    for (String keyword = outer.in.getKeyword(); !keyword.isNil(); keyword = outer.in.getKeyword()) {
        if (keyword == String(L"number")) {
            found += get<String>(outer.in).stringAnsi();
            ASSERT_TRUE(outer.in.startBlock());
            IntReader reader;
            EXPECT_TRUE(StatusCode::isTolerated(reader.readFrom(outer.stream, &outer.context)));
            EXPECT_TRUE(isEnd(outer.in.getKeyword()));
            found += std::to_string(reader.value);
        }
        outer.in.nextKeyword();
    }
    EXPECT_EQ(found, "a3b0c5");
    EXPECT_EQ(outer.in.status(), StatusCode::ok);
}

TEST(ReadFromScope, ReadsObjectsOfTheBareForm)
{
    OpenText outer("\"a\"\n{\n3\n}\n\"b\"\n{\n}\n", bare);
    std::string found;
    while (outer.in.hasValue()) {
        found += get<String>(outer.in).stringAnsi();
        ASSERT_TRUE(outer.in.startBlock());
        IntReader reader;
        EXPECT_EQ(reader.readFrom(outer.stream, &outer.context), StatusCode::ok);
        EXPECT_TRUE(isEnd(outer.in.getKeyword()));
        outer.in.nextKeyword();
        found += std::to_string(reader.value);
    }
    EXPECT_EQ(found, "a3b0");
    EXPECT_EQ(outer.in.status(), StatusCode::ok);
}

TEST(ReadFromScope, AnObjectReportsADamagedText)
{
    for (char const* const text :
         {"value 3", "value x;", "value 3; other {", "value 3; }", "value 3; @", "\"x"}) {
        OpenText outer("number { " + std::string(text));
        ASSERT_EQ(outer.in.getKeyword(), L"number");
        ASSERT_TRUE(outer.in.startBlock());
        IntReader reader;
        int const status = reader.readFrom(outer.stream, &outer.context);
        EXPECT_EQ(StatusCode::isTolerated(status), std::string(text) == "value 3; }") << text;
    }
}

TEST(WriteToScope, GivesTheFormatOfItsContextAndTheContext)
{
    std::ostringstream stream;
    WriteContext context(bare, false);
    WriteToScope const scope(&stream, &context);
    EXPECT_EQ(scope.getWriteContext(), &context);
    EXPECT_EQ(scope.getMof().format(), bare);
    EXPECT_EQ(context.getFormat(), bare);
    EXPECT_FALSE(context.writeDefaultValues());
    EXPECT_TRUE(WriteContext().writeDefaultValues());
    EXPECT_EQ(WriteContext().getFormat(), ModelFormat::Format::Keyed);
}

TEST(WriteToScope, OnTheSameStreamSharesTheOpenBlocks)
{
    std::ostringstream stream;
    WriteContext context;
    WriteToScope const outer(&stream, &context);
    outer.getMof().startValue(L"a");
    outer.getMof().startBlock();
    {
        WriteToScope const inner(&stream, &context);
        EXPECT_EQ(&inner.getMof(), &outer.getMof());
        inner.getMof().startValue(L"value");
        put(inner.getMof(), 3);
        inner.getMof().endValue();
    }
    outer.getMof().endBlock();
    EXPECT_EQ(stream.str(), "a {\n    value 3;\n}\n");
}

TEST(WriteToScope, OnAnotherStreamSharesNothing)
{
    std::ostringstream first;
    std::ostringstream second;
    WriteToScope const outer(&first, nullptr);
    WriteToScope const other(&second, nullptr);
    EXPECT_NE(&outer.getMof(), &other.getMof());
    outer.getMof().startValue(L"a");
    outer.getMof().endValue();
    EXPECT_EQ(second.str(), "");
    EXPECT_EQ(first.str(), "a;\n");
}

TEST(WriteToScope, WithoutAStreamIsNotGood)
{
    WriteToScope const scope(nullptr, nullptr);
    scope.getMof().startValue(L"a");
    put(scope.getMof(), 3);
    scope.getMof().endValue();
    EXPECT_FALSE(scope.getMof().good());
    EXPECT_EQ(scope.getWriteContext(), nullptr);
}

TEST(WriteToScope, AFullStreamIsNotGood)
{
    support::LimitedBuffer buffer(8);
    std::ostream stream(&buffer);
    WriteToScope const scope(&stream, nullptr);
    scope.getMof().startValue(L"a");
    put(scope.getMof(), 3);
    EXPECT_TRUE(scope.getMof().good());
    put(scope.getMof(), String(L"too long"));
    scope.getMof().endValue();
    EXPECT_FALSE(scope.getMof().good());
}

TEST(WriteToScope, AStreamAtItsEndIsNotClean)
{
    std::ostringstream stream;
    stream.setstate(std::ios::eofbit);
    EXPECT_FALSE(WriteToScope(&stream, nullptr).getMof().good());
}
