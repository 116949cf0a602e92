#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/clouds/PlyWriter.h"
#include "tools/simulation/CloudPointWriter.h"

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
using support::parseCloud;
using Numbers = std::vector<double>;
using Names = std::vector<std::string>;

std::string const binaryHeader = "ply\nformat binary_little_endian 1.0\n";
std::string const asciiHeader = "ply\nformat ascii 1.0\n";
std::string const coordinates =
    "property float x\nproperty float y\nproperty float z\nproperty double time\n";
std::string const end = "end_header\n";

/// Why a file of these bytes is refused.
std::string refusalOfPly(std::string const& bytes)
{
    return failureOf([&] { static_cast<void>(parseCloud(bytes, "scan.ply")); });
}

std::string bytesOf(std::initializer_list<int> bytes)
{
    std::string result;
    for (int const byte : bytes) {
        result.push_back(static_cast<char>(byte));
    }
    return result;
}

} // namespace

TEST(Ply, TheWriterPutsTheCountIntoTheHeader)
{
    std::ostringstream stream;
    CloudPointWriter writer(stream, "scan.ply");
    writer.add({{{1.0F, -2.0F, 0.5F}, 0x1234}, 1.0});
    writer.finish();
    EXPECT_EQ(stream.str(),
              "ply\n"
              "format binary_little_endian 1.0\n"
              "comment points in metres, times in seconds -------------------\n"
              "element vertex 1\n"
              "property float x\n"
              "property float y\n"
              "property float z\n"
              "property ushort intensity\n"
              "property double time\n"
              "end_header\n" +
                  bytesOf({0,    0,    0x80, 0x3F, 0, 0, 0, 0xC0, 0, 0,    0,
                           0x3F, 0x34, 0x12, 0,    0, 0, 0, 0,    0, 0xF0, 0x3F}));
}

TEST(Ply, TheLengthOfTheHeaderDoesNotDependOnTheCount)
{
    std::ostringstream stream;
    CloudPointWriter writer(stream, "scan.ply");
    auto const length = stream.str().size();
    for (int i = 0; i < 12345; ++i) {
        writer.add({});
    }
    EXPECT_EQ(writer.count(), 12345U);
    writer.finish();
    EXPECT_EQ(writer.count(), 12345U);
    EXPECT_NE(stream.str().find("element vertex 12345\n"), std::string::npos);
    EXPECT_EQ(stream.str().size(), length + 12345 * 22);
}

TEST(Ply, WrittenDataIsReadBack)
{
    std::ostringstream stream;
    CloudPointWriter writer(stream, "scan.ply");
    for (int i = 0; i < 100'000; ++i) {
        auto const f = static_cast<float>(i);
        writer.add({{{f, -f, f / 3.0F}, static_cast<std::uint16_t>(i % 65536)}, i % 7 == 0 ? NAN : i / 9.0});
    }
    writer.finish();
    CloudTable const scan = parseCloud(stream.str(), "scan.ply");
    EXPECT_EQ(scan.fields(), (Names{"x float", "y float", "z float", "intensity ushort", "time double"}));
    ASSERT_EQ(scan.size(), 100'000U);
    Numbers const x = scan.column("x");
    Numbers const z = scan.column("z");
    Numbers const intensity = scan.column("intensity");
    Numbers const time = scan.column("time");
    for (std::size_t i = 0; i < scan.size(); ++i) {
        auto const f = static_cast<float>(i);
        ASSERT_EQ(x[i], f);
        ASSERT_EQ(z[i], f / 3.0F);
        ASSERT_EQ(intensity[i], i % 65536) << i;
        ASSERT_TRUE(i % 7 == 0 ? std::isnan(time[i]) : time[i] == static_cast<double>(i) / 9.0) << i;
    }
}

TEST(Ply, EveryTypeIsReadInBothByteOrders)
{
    std::string const header =
        "comment by hand\nobj_info too\nelement vertex 1\n"
        "property uchar red\nproperty int time\nproperty short z\nproperty float32 confidence\n"
        "property uint8 alpha\nproperty double x\nproperty char y\nproperty uint label\n"
        "property uint16 green\n" +
        end;
    Names const fields{"red uchar",
                       "time int",
                       "z short",
                       "confidence float",
                       "alpha uchar",
                       "x double",
                       "y char",
                       "label uint",
                       "green ushort"};
    Numbers const values{200.0, -2.0, -1.0, 0.5, 255.0, 2.5, -128.0, 4293918720.0, 257.0};
    CloudTable const little =
        parseCloud(binaryHeader + header + bytesOf({200,                                      // red
                                                    0xFE, 0xFF, 0xFF, 0xFF,                   // time
                                                    0xFF, 0xFF,                               // z
                                                    0,    0,    0,    0x3F,                   // confidence
                                                    255,                                      // alpha
                                                    0,    0,    0,    0,    0, 0, 0x04, 0x40, // x
                                                    0x80,                                     // y
                                                    0,    0,    0xF0, 0xFF,                   // label
                                                    0x01, 0x01}),                             // green
                   "scan.ply");
    EXPECT_EQ(little.fields(), fields);
    ASSERT_EQ(little.size(), 1U);
    EXPECT_EQ(little.row(0), values);

    CloudTable const big = parseCloud("ply\nformat binary_big_endian 1.0\n" + header +
                                          bytesOf({200,                                // red
                                                   0xFF, 0xFF, 0xFF, 0xFE,             // time
                                                   0xFF, 0xFF,                         // z
                                                   0x3F, 0,    0,    0,                // confidence
                                                   255,                                // alpha
                                                   0x40, 0x04, 0,    0,    0, 0, 0, 0, // x
                                                   0x80,                               // y
                                                   0xFF, 0xF0, 0,    0,                // label
                                                   0x01, 0x01}),                       // green
                                      "scan.ply");
    EXPECT_EQ(big.fields(), fields);
    EXPECT_EQ(big.row(0), values);

    CloudTable const ascii =
        parseCloud(asciiHeader + header + "200 -2 -1 5e-1 255 2.5 -128 4293918720 257\n", "scan.ply");
    EXPECT_EQ(ascii.fields(), fields);
    EXPECT_EQ(ascii.row(0), values);
}

TEST(Ply, LinesMayEndWithCarriageReturns)
{
    std::string const header = "ply\r\nformat binary_little_endian 1.0\r\nelement vertex 1\r\n"
                               "property uchar x\r\nend_header\r\n";
    EXPECT_EQ(parseCloud(header + "\n", "scan.ply").row(0), (Numbers{10.0}));
    EXPECT_EQ(parseCloud("ply\r\nformat ascii 1.0\r\nelement vertex 2\r\nproperty uchar x\r\nend_header\r\n"
                         "1\r\n2\r\n",
                         "scan.ply")
                  .column("x"),
              (Numbers{1.0, 2.0}));
}

TEST(Ply, OtherElementsAreSkipped)
{
    std::string const elements = "element camera 2\nproperty short id\nelement vertex 2\nproperty uchar x\n"
                                 "element face 1\nproperty list uchar ushort vertex_indices\n" +
                                 end;
    CloudTable const binary =
        parseCloud(binaryHeader + elements + bytesOf({9, 9, 9, 9, 5, 6, 3, 0, 0, 1, 0, 1, 0}), "scan.ply");
    EXPECT_EQ(binary.column("x"), (Numbers{5.0, 6.0}));
    CloudTable const ascii = parseCloud(asciiHeader + elements + "9\n9\n5\n6\n3 0 1 1\n", "scan.ply");
    EXPECT_EQ(ascii.column("x"), (Numbers{5.0, 6.0}));
    EXPECT_EQ(
        refusalOfPly(binaryHeader + "element face 1\nproperty list uchar int i\nelement vertex 1\n" +
                     coordinates + end),
        "scan.ply:5: the element \"face\" has lists and is before the vertices; write the vertices first");
    // The bytes of a camera are missing.
    EXPECT_NE(refusalOfPly(binaryHeader + elements + bytesOf({9, 9, 9, 9, 5})), "");
}

TEST(Ply, AnEmptyScanIsAScan)
{
    EXPECT_EQ(parseCloud(binaryHeader + "element vertex 0\n" + coordinates + end, "scan.ply").size(), 0U);
    EXPECT_EQ(parseCloud(asciiHeader + "element vertex 0\n" + coordinates + end, "scan.ply").size(), 0U);
}

TEST(Ply, BadTextIsRefusedByLine)
{
    std::string const header =
        asciiHeader + "element vertex 2\nproperty float x\nproperty uchar label\n" + end;
    EXPECT_EQ(refusalOfPly(header + "1 2\n3 4\n"), "");
    EXPECT_EQ(refusalOfPly(header + "1 2\n3 4"), "");
    EXPECT_EQ(refusalOfPly(header + "1 2\n3\n"), "scan.ply:8: 1 columns instead of 2; is the line cut off?");
    EXPECT_EQ(refusalOfPly(header + "1 2 3\n3 4\n"), "scan.ply:7: 3 columns instead of 2");
    EXPECT_EQ(refusalOfPly(header + "1 2\n3 256\n"),
              "scan.ply:8: \"256\" is no number of the type uchar (label)");
    EXPECT_EQ(refusalOfPly(header + "1,5 2\n3 2\n"),
              "scan.ply:7: \"1,5\" is no number of the type float (x)");
    EXPECT_EQ(refusalOfPly(header + "1 2\n"),
              "scan.ply:8: the text ends after 1 points, but the header promises 2; the file is cut off or "
              "damaged");
    EXPECT_EQ(refusalOfPly(header),
              "scan.ply:7: the text ends after 0 points, but the header promises 2; the file is "
              "cut off or damaged");
}

TEST(Ply, LongTextsAreReadInBlocks)
{
    std::string lines;
    for (int i = 0; i < 60'000; ++i) {
        lines += std::to_string(i) + ' ' + std::to_string(i % 100) + '\n';
    }
    CloudTable const scan =
        parseCloud(asciiHeader + "element vertex 60000\nproperty double x\nproperty uchar label\n" + end +
                       lines + "rest\n",
                   "scan.ply");
    ASSERT_EQ(scan.size(), 60'000U);
    Numbers const x = scan.column("x");
    for (std::size_t i = 0; i < x.size(); ++i) {
        ASSERT_EQ(x[i], static_cast<double>(i));
    }
    // The number of the line counts on from block to block.
    std::string const wrong =
        refusalOfPly(asciiHeader + "element vertex 60001\nproperty double x\nproperty uchar label\n" + end +
                     lines + "rest 1\n");
    EXPECT_EQ(wrong.substr(0, 15), "scan.ply:60007:");
}

TEST(Ply, SixtyFourBitIntegersAreWrittenAsDoublesOrRefused)
{
    PointLayout const layout{{"label", FieldType::Int64}, {"id", FieldType::UInt64}};
    std::ostringstream stream;
    PlyWriter writer(stream, "cloud.ply", layout);
    PointBlock block;
    block.resize(1, layout);
    store(block.records.data(), std::int64_t{-9007199254740992});
    store(block.records.data() + 8, std::uint64_t{1} << 63U);
    std::vector<char> buffer;
    writer.write(writer.convert(block, {}, buffer), 1);
    writer.finish();
    CloudTable const cloud = parseCloud(stream.str(), "cloud.ply");
    EXPECT_EQ(cloud.fields(), (Names{"label double", "id double"}));
    EXPECT_EQ(cloud.row(0), (Numbers{-9007199254740992.0, 9223372036854775808.0}));

    store(block.records.data(), std::int64_t{9007199254740993});
    EXPECT_EQ(failureOf([&] { static_cast<void>(writer.convert(block, {}, buffer)); }),
              "cloud.ply: PLY has no 64-bit integers, and a double cannot hold the label 9007199254740993; "
              "write PCD, "
              "CSV or LAS");
    store(block.records.data(), std::int64_t{0});
    store(block.records.data() + 8, std::numeric_limits<std::uint64_t>::max());
    EXPECT_NE(failureOf([&] { static_cast<void>(writer.convert(block, {}, buffer)); }), "");
}

TEST(Ply, HostileHeadersAreRefusedByLine)
{
    std::string const vertex = "element vertex 1\n";
    std::string const formats = "the second line must be \"format ascii 1.0\", or binary_little_endian or "
                                "binary_big_endian instead of ascii";
    EXPECT_EQ(refusalOfPly("ply\nformat half 1.0\n"), "scan.ply:2: \"half\" is not a format of PLY");
    EXPECT_EQ(refusalOfPly("ply\nformat binary_little_endian 1.0 x\n"), "scan.ply:2: " + formats);
    EXPECT_EQ(refusalOfPly("ply\n" + vertex), "scan.ply:2: " + formats);
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + coordinates + end.substr(0, 5)),
              "scan.ply:8: the header ends early, or its line is too long");
    EXPECT_EQ(refusalOfPly(binaryHeader + "\n"), "scan.ply:3: an empty line in the header");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + coordinates + vertex),
              "scan.ply:8: the element \"vertex\" is there twice");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + coordinates + "element face 0\n" + vertex),
              "scan.ply:9: the element \"vertex\" is there twice");
    EXPECT_EQ(refusalOfPly(binaryHeader + "element vertex -1\n"), "scan.ply:3: \"-1\" is not a count");
    EXPECT_EQ(refusalOfPly(binaryHeader + "element vertex 1e3\n"), "scan.ply:3: \"1e3\" is not a count");
    EXPECT_EQ(refusalOfPly(binaryHeader + "element vertex\n"),
              "scan.ply:3: an element needs a name and a count");
    EXPECT_EQ(refusalOfPly(binaryHeader + "property float x\n"), "scan.ply:3: a property before its element");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + "property list uchar int x\n"),
              "scan.ply:4: list properties of vertices are not supported");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + "property half x\n"),
              "scan.ply:4: \"half\" is not a scalar type");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + coordinates + "property int x\n"),
              "scan.ply:8: the property \"x\" is there twice");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + coordinates + "end_headers\n"),
              "scan.ply:8: \"end_headers\" is not understood");
    EXPECT_EQ(refusalOfPly(binaryHeader + end), "scan.ply:3: there is no \"element vertex\"");
    EXPECT_EQ(refusalOfPly(binaryHeader + vertex + end), "scan.ply:4: the vertices have no property");
    EXPECT_EQ(refusalOfPly(binaryHeader + "element edge 9223372036854775807\nproperty double x\n" + vertex +
                           coordinates + end),
              "scan.ply:5: the counts are larger than any file");
}

TEST(Ply, HeadersWithoutEndAreRefused)
{
    EXPECT_EQ(refusalOfPly("ply\n" + std::string(100'000, 'y')),
              "scan.ply:2: the header ends early, or its line is too long");
    std::string comments = binaryHeader;
    for (int i = 0; i < 10'000; ++i) {
        comments += "comment\n";
    }
    EXPECT_EQ(refusalOfPly(comments), "scan.ply:1000: the header has no end");
}

TEST(Ply, TheCountMustFitTheFileBeforeRoomIsMade)
{
    std::string const vertices(3 * 20, '\0');
    auto const scan = [&](std::string const& count) {
        return refusalOfPly(binaryHeader + "element vertex " + count + "\n" + coordinates + end + vertices);
    };
    EXPECT_EQ(scan("3"), "");
    EXPECT_EQ(scan("4"),
              "scan.ply: the header promises 4 vertices of 20 bytes, but 60 bytes follow it; the file is cut "
              "off or damaged");
    EXPECT_NE(scan("2"), "");
    EXPECT_NE(scan("0"), "");
    EXPECT_NE(scan("1000000000000"), "");
    EXPECT_NE(scan("9223372036854775807"), "");
    // 2^62 + 3 vertices of 20 bytes wrap around to 60 bytes.
    EXPECT_NE(scan("4611686018427387907"), "");
}
