#include <roamscan/frame/formats/DataInFormat.h>
#include <roamscan/frame/formats/DataOutFormat.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/frame/formats/WriteToScope.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::DataInFormat;
using oV::DataOutFormat;
using oV::ModelFormat;
using oV::ModelInFormat;
using oV::ModelOutFormat;
using oV::ReadContext;
using oV::ReadFromScope;
using oV::WriteContext;
using oV::WriteToScope;
namespace StatusCode = oV::StatusCode;

template <typename T>
T get(ModelInFormat& in)
{
    std::optional<T> const value = DataInFormat<T>(in).get();
    EXPECT_TRUE(value.has_value()) << in.status();
    return value.value_or(T{});
}

template <typename T>
void put(ModelOutFormat& out, T const& value)
{
    DataOutFormat<T>(out).put(value);
}

// Two blocks, the second with a block inside, as a container might write them.
void writeExample(ModelOutFormat& out)
{
    out.startValue(L"version");
    put(out, 2);
    out.endValue();
    out.startValue(L"attribute");
    put(out, String(L"Title"));
    out.startBlock();
    out.startValue(L"value");
    put(out, std::vector<String>{L"a", String::NIL, L""});
    out.endValue();
    out.startValue(L"more values");
    put(out, -0.5);
    put(out, true);
    out.startBlock();
    out.endBlock();
    out.endBlock();
}

constexpr char const* exampleText = "version 2;\n"
                                    "attribute \"Title\" {\n"
                                    "    value [\"a\", null, \"\"];\n"
                                    "    \"more values\" -0.5 true {\n"
                                    "    }\n"
                                    "}\n";

} // namespace

TEST(KeyedFormat, WritesStatementsOnLinesAndIndentsBlocks)
{
    std::ostringstream stream;
    WriteContext context;
    WriteToScope const scope(&stream, &context);
    writeExample(scope.getMof());
    EXPECT_EQ(stream.str(), exampleText);
}

TEST(KeyedFormat, WalksKeywordsValuesAndBlocks)
{
    std::istringstream stream(exampleText);
    ReadContext context;
    ReadFromScope const scope(&stream, &context);
    ModelInFormat& in = scope.getImf();
    EXPECT_EQ(in.getKeyword(), L"version");
    EXPECT_EQ(get<int>(in), 2);
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"attribute");
    EXPECT_EQ(get<String>(in), L"Title");
    ASSERT_TRUE(in.startBlock());
    EXPECT_EQ(in.getKeyword(), L"value");
    EXPECT_EQ(get<std::vector<String>>(in), (std::vector<String>{L"a", String::NIL, L""}));
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"more values");
    EXPECT_EQ(get<double>(in), -0.5);
    EXPECT_EQ(get<bool>(in), true);
    ASSERT_TRUE(in.startBlock());
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_TRUE(in.getKeyword().isNil());
    EXPECT_EQ(in.status(), StatusCode::ok);
}
