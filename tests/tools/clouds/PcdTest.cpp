#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/clouds/PcdWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan::tool;
using support::CloudTable;
using support::failureOf;
using support::parseCloud;
using Numbers = std::vector<double>;
using Names = std::vector<std::string>;

std::string header(std::string const& fields, std::string const& rest)
{
    return "# .PCD v0.7 - Point Cloud Data file format\nVERSION 0.7\n" + fields +
           "WIDTH 2\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS 2\n" + rest;
}

std::string const fieldLines = "FIELDS x label rest\nSIZE 4 8 1\nTYPE F U I\nCOUNT 1 1 2\n";

std::string refusalOfPcd(std::string const& bytes)
{
    return failureOf([&] { static_cast<void>(parseCloud(bytes, "scan.pcd")); });
}

} // namespace

TEST(Pcd, TextAndBinaryHoldTheSamePoints)
{
    Names const names{"x float", "label ulong", "rest_0 char", "rest_1 char"};
    Numbers const first{1.5, 9007199254740992.0, -1.0, 2.0};
    CloudTable const text =
        parseCloud(header(fieldLines, "DATA ascii\n1.5 9007199254740992 -1 2\nnan 0 3 4\n"), "scan.pcd");
    EXPECT_EQ(text.fields(), names);
    ASSERT_EQ(text.size(), 2U);
    EXPECT_EQ(text.row(0), first);
    EXPECT_TRUE(std::isnan(text.column("x")[1]));

    std::string const points("\0\0\xC0\x3F\0\0\0\0\0\0\x20\0\xFF\x02"
                             "\0\0\0\0\0\0\0\0\0\0\0\0\x03\x04",
                             28);
    CloudTable const binary = parseCloud(header(fieldLines, "DATA binary\n" + points), "scan.pcd");
    EXPECT_EQ(binary.fields(), names);
    ASSERT_EQ(binary.size(), 2U);
    EXPECT_EQ(binary.row(0), first);
    EXPECT_EQ(binary.row(1), (Numbers{0.0, 0.0, 3.0, 4.0}));
    EXPECT_EQ(
        refusalOfPcd(header(fieldLines, "DATA binary\n" + points.substr(1))),
        "scan.pcd: the header promises 2 points of 14 bytes, but 27 bytes follow it; the file is cut off or "
        "damaged");
}

TEST(Pcd, TheCountMayFollowFromWidthAndHeight)
{
    CloudTable const cloud =
        parseCloud("VERSION .7\r\nFIELDS x\r\nSIZE 4\r\nTYPE F\r\nWIDTH 2\r\nHEIGHT 2\r\nDATA "
                   "ascii\r\n1\r\n2\r\n3\r\n4\r\n",
                   "scan");
    EXPECT_EQ(cloud.column("x"), (Numbers{1.0, 2.0, 3.0, 4.0}));
}

TEST(Pcd, HostileHeadersAreRefusedByLine)
{
    EXPECT_EQ(refusalOfPcd("VERSION 0.7\nPOINT 3\n"), "scan.pcd:2: \"POINT\" is no entry of a PCD header");
    EXPECT_EQ(refusalOfPcd("VERSION 0.7\n"), "scan.pcd:2: the header ends early, or its line is too long");
    EXPECT_EQ(refusalOfPcd("DATA ascii\n"), "scan.pcd:1: there are no FIELDS");
    EXPECT_EQ(refusalOfPcd(header(fieldLines, "DATA binary_compressed\n")),
              "scan.pcd:11: the points are compressed, which is not supported; convert the file to binary");
    EXPECT_EQ(refusalOfPcd(header(fieldLines, "DATA\n")), "scan.pcd:11: DATA must be binary or ascii");
    EXPECT_EQ(refusalOfPcd(header("FIELDS x\nSIZE 2\nTYPE F\n", "DATA ascii\n")),
              "scan.pcd:10: a field of the type \"F\" and the size \"2\" is not supported");
    EXPECT_EQ(refusalOfPcd(header("FIELDS x y\nSIZE 4\nTYPE F F\n", "DATA ascii\n")),
              "scan.pcd:10: FIELDS, SIZE, TYPE and COUNT differ in length");
    EXPECT_EQ(refusalOfPcd(header("FIELDS x\nSIZE 4\nTYPE F\nCOUNT 1000000000\n", "DATA ascii\n")),
              "scan.pcd:11: \"1000000000\" is not a count of numbers");
    EXPECT_EQ(refusalOfPcd("FIELDS x\nSIZE 4\nTYPE F\nDATA ascii\n"), "scan.pcd:4: there are no POINTS");
    EXPECT_EQ(refusalOfPcd("FIELDS x\nSIZE 4\nTYPE F\nWIDTH 4294967296\nHEIGHT 4294967297\nDATA binary\n"),
              "scan.pcd:6: WIDTH and HEIGHT are larger than any file");
    EXPECT_NE(refusalOfPcd("FIELDS x\nSIZE 4\nTYPE F\nPOINTS 9223372036854775807\nDATA binary\n"), "");
}

TEST(Pcd, IsWrittenWithItsCount)
{
    PointLayout const layout{
        {"x", FieldType::Double}, {"my label", FieldType::Int64}, {"r", FieldType::UInt8}};
    std::ostringstream stream;
    PcdWriter writer(stream, "cloud.pcd", layout, {"a comment"});
    PointBlock block;
    block.resize(1, layout);
    store(block.records.data(), 0.5);
    store(block.records.data() + 8, std::int64_t{-9007199254740993});
    store(block.records.data() + 16, std::uint8_t{200});
    std::vector<char> buffer;
    for (int i = 0; i < 12; ++i) {
        writer.write(writer.convert(block, {}, buffer), 1);
    }
    writer.finish();
    std::string const bytes = stream.str();
    std::string const expected = "# .PCD v0.7 - Point Cloud Data file format\n"
                                 "# points in metres, times in seconds ------------------------------------\n"
                                 "# a comment\n"
                                 "VERSION 0.7\nFIELDS x my_label r\nSIZE 8 8 1\nTYPE F I U\nCOUNT 1 1 1\n"
                                 "WIDTH 12\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS 12\nDATA binary\n";
    EXPECT_EQ(bytes.substr(0, expected.size()), expected);
    EXPECT_EQ(bytes.size(), expected.size() + 12 * 17);
    CloudTable const cloud = parseCloud(bytes, "cloud.pcd");
    ASSERT_EQ(cloud.size(), 12U);
    EXPECT_EQ(load<std::int64_t>(cloud.points.records.data() + 8), -9007199254740993);
    EXPECT_EQ(cloud.column("r")[11], 200.0);
}
