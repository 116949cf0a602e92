#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/clouds/CsvWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan::tool;
using support::CloudTable;
using support::failureOf;
using Numbers = std::vector<double>;
using Names = std::vector<std::string>;

CloudTable parse(std::string const& text, TextSettings const& settings = {})
{
    return support::tableOf(*openCloud(
        CloudInput{std::make_unique<std::istringstream>(text), text.size(), "scan.csv"}, settings));
}

std::string refusalOfText(std::string const& text, TextSettings const& settings = {})
{
    return failureOf([&] { static_cast<void>(parse(text, settings)); });
}

} // namespace

TEST(TextCloud, TakesNamesFromItsHeader)
{
    Numbers const row{1.0, 2.5, -3.0, 100.25, 7.0};
    Names const names{"X double", "Y double", "Z double", "GPS Time double", "label uchar"};
    for (std::string const text : {"X,Y,Z,GPS Time,label\n1,2.5,-3,100.25,7\n",
                                   "\xEF\xBB\xBFX,Y,Z,GPS Time,label\r\n1,2.5,-3,100.25,7\r\n",
                                   "\"X\",\"Y\",\"Z\",\"GPS Time\",\"label\"\n1, 2.5, -3, 100.25, 7",
                                   "X;Y;Z;GPS Time;label\n\n# nothing\n+1;2.5;-3;1.0025e2;7\n",
                                   "X\tY\tZ\tGPS Time\tlabel\n1\t2.5\t-3\t100.25\t7\n"})
    {
        CloudTable const cloud = parse(text);
        EXPECT_EQ(cloud.fields(), names) << text;
        ASSERT_EQ(cloud.size(), 1U) << text;
        EXPECT_EQ(cloud.row(0), row) << text;
    }
}

TEST(TextCloud, TakesNamesFromACommentOrFromTheSettings)
{
    Names const names{"x double", "y double", "z double", "time double"};
    for (std::string const text :
         {"# x y z time\n 1 2 3 100.5 \n", "//x y z time\n1  2\t3 100.5\n", "#x,y,z,time\n1,2,3,100.5\n"})
    {
        CloudTable const cloud = parse(text);
        EXPECT_EQ(cloud.fields(), names) << text;
        EXPECT_EQ(cloud.row(0), (Numbers{1.0, 2.0, 3.0, 100.5})) << text;
    }
    CloudTable const named = parse("1 2 3 100.5\n4 5 6 101\n", {{"x", "y", "z", "time"}, {}});
    EXPECT_EQ(named.fields(), names);
    EXPECT_EQ(named.column("time"), (Numbers{100.5, 101.0}));
    EXPECT_EQ(parse("a b c d\n1 2 3 100.5\n", {{"x", "y", "z", "time"}, {}}).fields(), names);
    EXPECT_EQ(refusalOfText("\n1 2 3 100.5\n"),
              "scan.csv:2: the 4 columns have no names; give them with --columns x,y,z,time");
    EXPECT_EQ(refusalOfText("1 2 3 100.5\n", {{"x", "y", "z"}, {}}), "scan.csv:1: 4 columns instead of 3");
    EXPECT_EQ(refusalOfText("x,y,x\n1,2,3\n"),
              "scan.csv: two columns have the name \"x\"; give other names with --columns");
}

TEST(TextCloud, EveryColumnHasTheSmallestTypeOfItsValues)
{
    CloudTable const cloud = parse("x,a,b,c,d,e,f,g,h,i,j,k\n"
                                   "1,0,256,65536,4294967296,-1,-129,-32769,-2147483649,1.0,1,-0\n"
                                   "2,255,1,1,18446744073709551615,127,1,1,9223372036854775807,2,,1\n");
    EXPECT_EQ(cloud.fields(),
              (Names{"x double",
                     "a uchar",
                     "b ushort",
                     "c uint",
                     "d ulong",
                     "e char",
                     "f short",
                     "g int",
                     "h long",
                     "i double",
                     "j double",
                     "k double"}));
    EXPECT_EQ(cloud.column("h")[0], -2147483649.0);
    EXPECT_TRUE(std::isnan(cloud.column("j")[1]));
    EXPECT_TRUE(std::signbit(cloud.column("k")[0]));
}

TEST(TextCloud, NanosecondsStayIntegers)
{
    CloudTable const cloud = parse("x,y,z,time\n1,2,3,1403715524907143168\n");
    ASSERT_EQ(cloud.fields().back(), "time ulong");
    EXPECT_EQ(load<std::uint64_t>(cloud.points.records.data() + 24), 1403715524907143168U);
    EXPECT_EQ(parse("x,y,z,when\n1,2,3,100\n", {{}, "when"}).fields().back(), "when double");
}

TEST(TextCloud, BadLinesAreRefusedByNumber)
{
    std::string const start = "x,y,z,time\n1,2,3,4\n";
    EXPECT_EQ(refusalOfText(start + "1,2,3\n"), "scan.csv:3: 3 columns instead of 4; is the line cut off?");
    EXPECT_EQ(refusalOfText(start + "# comment\n1,2,3,4,5\n"), "scan.csv:4: 5 columns instead of 4");
    EXPECT_EQ(refusalOfText(start + "1,2,three,4\n"),
              "scan.csv:3: \"three\" is no number of the type double (z)");
    EXPECT_EQ(refusalOfText(start + "1,2,3,4 s\n"),
              "scan.csv:3: \"4 s\" is no number of the type double (time)");
    EXPECT_EQ(refusalOfText(""), "scan.csv: there is no point in it");
    EXPECT_EQ(refusalOfText("x,y,z,time\n"), "");
    EXPECT_EQ(refusalOfText(std::string("x,y\0", 4)),
              "scan.csv: is not a cloud that this program reads: PLY, PCD, LAS, CSV or XYZ text");
    EXPECT_NE(refusalOfText(start + std::string(70'000, '1')), "");
}

TEST(TextCloud, LinesWithoutAPointGiveNone)
{
    EXPECT_EQ(parse("x,y,z,time\n# no point\n\n").column("x"), (Numbers{}));
}

TEST(TextCloud, ManyBlankLinesCostNoMemory)
{
    std::string names = "x";
    for (int i = 0; i < 5000; ++i) {
        names += ",c" + std::to_string(i);
    }
    CloudTable const cloud = parse(names + '\n' + std::string(300'000, '\n'));
    EXPECT_EQ(cloud.size(), 0U);
}

TEST(Csv, NumbersAreWrittenAsTheShortestTextOfTheirType)
{
    PointLayout const layout{{"x", FieldType::Double},
                             {"a,b", FieldType::Float},
                             {"id", FieldType::UInt64},
                             {"n", FieldType::Int8}};
    std::ostringstream stream;
    CsvWriter writer(stream, "cloud.csv", layout);
    PointBlock block;
    block.resize(2, layout);
    char* record = block.records.data();
    store(record, 5400000.1);
    store(record + 8, 0.1F);
    store(record + 12, std::numeric_limits<std::uint64_t>::max());
    store(record + 20, std::int8_t{-5});
    record += layout.stride();
    store(record, -1.7976931348623157e308);
    store(record + 8, std::numeric_limits<float>::quiet_NaN());
    store(record + 12, std::uint64_t{0});
    store(record + 20, std::int8_t{0});
    std::vector<char> buffer;
    writer.write(writer.convert(block, {}, buffer), 2);
    writer.finish();
    EXPECT_EQ(stream.str(),
              "x,a_b,id,n\n5400000.1,0.1,18446744073709551615,-5\n-1.7976931348623157e+308,nan,0,0\n");
}
