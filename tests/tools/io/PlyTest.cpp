#include "tests/tools/support/ToolFixture.h"
#include "tools/io/PlyReader.h"
#include "tools/io/PlyWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

std::string const start = "ply\nformat binary_little_endian 1.0\n";
std::string const coordinates =
    "property float x\nproperty float y\nproperty float z\nproperty double time\n";
std::string const end = "end_header\n";

class PlyTest : public ToolFixture
{
protected:
    /// Why a file of these bytes is refused, without the folder's name.
    [[nodiscard]] std::string refusal(std::string const& bytes) const
    {
        auto const path = write("scan.ply", bytes);
        std::string why = failureOf([&] { static_cast<void>(readPlyFile(path)); });
        auto const name = why.find("scan.ply");
        return name == std::string::npos ? why : why.substr(name);
    }
};

std::string bytesOf(std::initializer_list<int> bytes)
{
    std::string text;
    for (int const byte : bytes) {
        text.push_back(static_cast<char>(byte));
    }
    return text;
}

} // namespace

TEST_F(PlyTest, TheWriterPutsTheCountIntoTheHeader)
{
    std::ostringstream stream;
    PlyWriter writer(stream);
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

TEST_F(PlyTest, TheLengthOfTheHeaderDoesNotDependOnTheCount)
{
    std::ostringstream stream;
    PlyWriter writer(stream);
    auto const length = stream.str().size();
    for (int i = 0; i < 1234; ++i) {
        writer.add({});
    }
    writer.finish();
    EXPECT_NE(stream.str().find("element vertex 1234\n"), std::string::npos);
    EXPECT_EQ(stream.str().size(), length + 1234 * 22);
}

TEST_F(PlyTest, WrittenDataIsReadBack)
{
    std::ostringstream stream;
    PlyWriter writer(stream);
    for (int i = 0; i < 100'000; ++i) {
        auto const f = static_cast<float>(i);
        writer.add({{{f, -f, f / 3.0F}, static_cast<std::uint16_t>(i % 65536)}, i % 7 == 0 ? NAN : i / 9.0});
    }
    writer.finish();
    std::vector<CloudPoint> const scan = readPlyFile(write("scan.ply", stream.str()));
    ASSERT_EQ(scan.size(), 100'000U);
    for (std::size_t i = 0; i < scan.size(); ++i) {
        auto const f = static_cast<float>(i);
        ASSERT_EQ(scan[i].position, (Bv_1_1::Vec3d<float>{f, -f, f / 3.0F})) << i;
        ASSERT_EQ(scan[i].intensity, i % 65536) << i;
        ASSERT_TRUE(i % 7 == 0 ? std::isnan(scan[i].time) : scan[i].time == static_cast<double>(i) / 9.0)
            << i;
    }
}

TEST_F(PlyTest, PropertiesComeInAnyOrderAndType)
{
    auto const path =
        write("scan.ply",
              start +
                  "comment by hand\nobj_info too\nelement vertex 1\n"
                  "property uchar red\nproperty int time\nproperty short z\nproperty float32 confidence\n"
                  "property uint8 alpha\nproperty double x\nproperty char y\nproperty float intensity\n"
                  "property uint16 green\n" +
                  end + bytesOf({200,                                      // red
                                 0xFE, 0xFF, 0xFF, 0xFF,                   // time -2
                                 0xFF, 0xFF,                               // z -1
                                 1,    2,    3,    4,                      // confidence, without a use
                                 255,                                      // alpha
                                 0,    0,    0,    0,    0, 0, 0x04, 0x40, // x 2.5
                                 0x80,                                     // y -128
                                 0x00, 0x00, 0x80, 0x47,                   // intensity 65536, beyond 16 bits
                                 0x01, 0x01}));                            // green 257, beyond 8 bits
    std::vector<CloudPoint> const scan = readPlyFile(path);
    ASSERT_EQ(scan.size(), 1U);
    EXPECT_EQ(scan[0].position, (Bv_1_1::Vec3d<float>{2.5F, -128.0F, -1.0F}));
    EXPECT_EQ(scan[0].time, -2.0);
    EXPECT_EQ(scan[0].intensity, 65535);
    EXPECT_EQ(scan[0].r, 200);
    EXPECT_EQ(scan[0].g, 255);
    EXPECT_EQ(scan[0].b, 0);
    EXPECT_EQ(scan[0].a, 255);
}

TEST_F(PlyTest, AnEmptyScanIsAScan)
{
    EXPECT_EQ(readPlyFile(write("scan.ply", start + "element vertex 0\n" + coordinates + end)).size(), 0U);
}

TEST_F(PlyTest, HostileHeadersAreRefusedByLine)
{
    std::string const vertex = "element vertex 1\n";
    EXPECT_EQ(refusal(""), "scan.ply:1: the header ends early, or its line is too long");
    EXPECT_EQ(refusal("obj\n"), "scan.ply:1: does not begin with \"ply\"; give a PLY file");
    EXPECT_EQ(refusal("ply\nformat ascii 1.0\n"),
              "scan.ply:2: the format must be \"binary_little_endian 1.0\"; convert the file");
    EXPECT_EQ(refusal("ply\nformat binary_little_endian 1.0 x\n"), refusal("ply\nformat ascii 1.0\n"));
    EXPECT_EQ(refusal("ply\n" + vertex), refusal("ply\nformat ascii 1.0\n"));
    EXPECT_EQ(refusal(start + vertex + coordinates + end.substr(0, 5)),
              "scan.ply:8: the header ends early, or its line is too long");
    EXPECT_EQ(refusal(start + "\n"), "scan.ply:3: an empty line in the header");
    EXPECT_EQ(refusal(start + "element face 1\n").substr(0, 34), "scan.ply:3: the element \"face\" is ");
    EXPECT_EQ(refusal(start + vertex + coordinates + vertex).substr(0, 36),
              "scan.ply:8: the element \"vertex\" is ");
    EXPECT_EQ(refusal(start + "element vertex -1\n"), "scan.ply:3: \"-1\" is not a count of vertices");
    EXPECT_EQ(refusal(start + "element vertex 1e3\n"), "scan.ply:3: \"1e3\" is not a count of vertices");
    EXPECT_EQ(refusal(start + "element vertex\n"), "scan.ply:3: an element needs a name and a count");
    EXPECT_EQ(refusal(start + "property float x\n"), "scan.ply:3: a property before its element");
    EXPECT_EQ(refusal(start + vertex + "property list uchar int x\n"),
              "scan.ply:4: list properties are not supported");
    EXPECT_EQ(refusal(start + vertex + "property half x\n"), "scan.ply:4: \"half\" is not a scalar type");
    EXPECT_EQ(refusal(start + vertex + coordinates + "property int x\n"),
              "scan.ply:8: the property \"x\" is there twice");
    EXPECT_EQ(refusal(start + vertex + coordinates + "end_header\r\n").substr(0, 26),
              "scan.ply:8: \"end_header?\" ");
    EXPECT_EQ(refusal(start + vertex + "property float x\nproperty float y\nproperty float z\n" + end),
              "scan.ply:7: the vertices lack the property \"time\"; x, y, z and time are needed");
    EXPECT_EQ(refusal(start + end), "scan.ply:3: there is no \"element vertex\"");
}

TEST_F(PlyTest, HeadersWithoutEndAreRefused)
{
    EXPECT_EQ(refusal("ply" + std::string(100'000, 'y')),
              "scan.ply:1: the header ends early, or its line is too long");
    std::string comments = start;
    for (int i = 0; i < 10'000; ++i) {
        comments += "comment\n";
    }
    EXPECT_EQ(refusal(comments), "scan.ply:1000: the header has no end");
}

TEST_F(PlyTest, TheCountMustFitTheFileBeforeRoomIsMade)
{
    std::string const vertices(3 * 20, '\0');
    auto const scan = [&](std::string const& count) {
        return refusal(start + "element vertex " + count + "\n" + coordinates + end + vertices);
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
