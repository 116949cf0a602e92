#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/clouds/LasFormat.h"
#include "tools/clouds/LasWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan::tool;
using support::CloudTable;
using support::failureOf;
using support::parseCloud;
using Numbers = std::vector<double>;
using Names = std::vector<std::string>;

/// A file of LAS 1.2 with points of the format 1, of which each has two extra bytes.
struct Bytes
{
    Bytes()
    {
        text.replace(0, 4, "LASF");
        put(24, std::uint8_t{1});
        put(25, std::uint8_t{2});
        put(94, std::uint16_t{227});
        put(96, std::uint32_t{227});
        put(104, std::uint8_t{1});
        put(105, std::uint16_t{30});
        put(107, std::uint32_t{1});
        for (std::size_t axis = 0; axis < 3; ++axis) {
            put(131 + 8 * axis, 0.01);
            put(155 + 8 * axis, 1000.0);
        }
        put(227, std::int32_t{-150});          // x
        put(231, std::int32_t{0});             // y
        put(235, std::int32_t{1});             // z
        put(239, std::uint16_t{65535});        // intensity
        put(241, std::uint8_t{0b1'0'011'010}); // the edge; return 2 of 3
        put(242, std::uint8_t{0b100'00101});   // withheld, class 5
        put(243, std::int8_t{-9});             // scan angle rank
        put(244, std::uint8_t{77});            // user data
        put(245, std::uint16_t{300});          // point source
        put(247, 245380.78254962614);          // time
        put(255, std::uint16_t{0x0201});
    }

    template <typename Number>
    void put(std::size_t at, Number number)
    {
        storeLittleEndian(&text[at], number);
    }

    std::string text = std::string(257, '\0');
};

std::string refusalOfLas(std::string const& bytes)
{
    return failureOf([&] { static_cast<void>(parseCloud(bytes, "scan.las")); });
}

/// Points that are written as LAS and read back.
CloudTable writtenAndRead(PointLayout const& layout,
                          PointBlock const& block,
                          Numbers const& times,
                          LasSettings const& settings = {})
{
    std::ostringstream stream;
    LasWriter writer(stream, "cloud.las", layout, settings);
    std::vector<char> buffer;
    writer.write(writer.convert(block, times, buffer), block.count);
    writer.finish();
    return parseCloud(stream.str(), "cloud.las");
}

} // namespace

TEST(Las, EveryBitOfAPointIsRead)
{
    CloudTable const cloud = parseCloud(Bytes().text, "scan.las");
    ASSERT_EQ(cloud.size(), 1U);
    EXPECT_EQ(cloud.fields(),
              (Names{"x double",
                     "y double",
                     "z double",
                     "intensity ushort",
                     "return_number uchar",
                     "number_of_returns uchar",
                     "scan_direction_flag uchar",
                     "edge_of_flight_line uchar",
                     "classification uchar",
                     "synthetic uchar",
                     "key_point uchar",
                     "withheld uchar",
                     "scan_angle_rank char",
                     "user_data uchar",
                     "point_source_id ushort",
                     "gps_time double",
                     "extra_byte_0 uchar",
                     "extra_byte_1 uchar"}));
    EXPECT_EQ(cloud.row(0),
              (Numbers{998.5,
                       1000.0,
                       1000.01,
                       65535.0,
                       2.0,
                       3.0,
                       0.0,
                       1.0,
                       5.0,
                       0.0,
                       0.0,
                       1.0,
                       -9.0,
                       77.0,
                       300.0,
                       245380.78254962614,
                       1.0,
                       2.0}));
}

TEST(Las, DamagedHeadersAreRefused)
{
    std::string const whole = Bytes().text;
    EXPECT_EQ(refusalOfLas(whole.substr(0, 226)),
              "scan.las: ends within its header, at byte 226; the file is cut off");
    EXPECT_EQ(
        refusalOfLas(whole.substr(0, 256)),
        "scan.las: the header promises 1 points of 30 bytes, but 29 bytes follow it; the file is cut off or "
        "damaged");
    auto const changed = [](std::size_t at, auto number) {
        Bytes bytes;
        bytes.put(at, number);
        return refusalOfLas(bytes.text);
    };
    EXPECT_EQ(changed(25, std::uint8_t{5}), "scan.las: is of an unknown version; LAS 1.0 to 1.4 are known");
    EXPECT_EQ(changed(104, std::uint8_t{129}),
              "scan.las: its points are compressed (LAZ); decompress the file to LAS");
    EXPECT_EQ(changed(104, std::uint8_t{11}), "scan.las: the point format 11 is unknown; 0 to 10 are known");
    EXPECT_EQ(changed(104, std::uint8_t{2}),
              "scan.las: points of the format 2 have no GPS time, and a point is placed by its time; the "
              "formats 1 and "
              "3 to 10 have it");
    EXPECT_EQ(changed(105, std::uint16_t{27}),
              "scan.las: the header is damaged: points of the format 1 take 28 bytes, not 27");
    EXPECT_EQ(changed(96, std::uint32_t{100000}),
              "scan.las: the header is damaged: the points begin at byte 100000 of 257");
    EXPECT_NE(changed(107, std::uint32_t{0xFFFFFFFF}), "");
    EXPECT_NE(changed(131, std::numeric_limits<double>::quiet_NaN()), "");
    EXPECT_EQ(changed(100, std::uint32_t{0xFFFFFFFF}), "")
        << "a lying count of records between header and points";
    EXPECT_NE(changed(105, std::uint16_t{60000}), "");
}

TEST(Las, APointOfTheOldFormatsIsWrittenBackWithEveryBit)
{
    CloudTable const scan = parseCloud(Bytes().text, "scan.las");
    CloudTable const cloud = writtenAndRead(
        scan.layout, scan.points, scan.column("gps_time"), {"gps_time", {1000.0, 0.0, 0.0}, 1e-6});
    Names expected = scan.fields();
    EXPECT_EQ(cloud.fields(), expected);
    Numbers const before = scan.row(0);
    Numbers const after = cloud.row(0);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_NEAR(after[i], before[i], i < 3 ? 5e-7 : 0.0) << expected[i];
    }
}

TEST(Las, PropertiesWithoutADimensionBecomeExtraBytes)
{
    PointLayout const layout{{"x", FieldType::Double},
                             {"y", FieldType::Double},
                             {"z", FieldType::Double},
                             {"red", FieldType::UInt8},
                             {"green", FieldType::UInt8},
                             {"blue", FieldType::UInt8},
                             {"intensity", FieldType::Float},
                             {"Classification", FieldType::UInt8},
                             {"stamp", FieldType::Int64}};
    PointBlock block;
    block.resize(1, layout);
    char* const record = block.records.data();
    store(record, 5400123.456789);
    store(record + 8, -1.0);
    store(record + 16, 0.0000004);
    store(record + 24, std::uint8_t{200});
    store(record + 25, std::uint8_t{1});
    store(record + 26, std::uint8_t{255});
    store(record + 27, 0.1F);
    store(record + 31, std::uint8_t{66});
    store(record + 32, std::int64_t{-9007199254740993});
    CloudTable const cloud = writtenAndRead(layout, block, {12.5}, {"", {5400000.0, 0.0, 0.0}, 1e-6});
    ASSERT_EQ(cloud.size(), 1U);
    EXPECT_NEAR(cloud.column("x")[0], 5400123.456789, 1e-9);
    EXPECT_EQ(cloud.column("y")[0], -1.0);
    EXPECT_EQ(cloud.column("z")[0], 0.0);
    EXPECT_EQ(cloud.column("red")[0], 51200.0);
    EXPECT_EQ(cloud.column("blue")[0], 65280.0);
    EXPECT_EQ(cloud.column("classification")[0], 66.0);
    EXPECT_EQ(cloud.column("gps_time")[0], 12.5);
    EXPECT_EQ(cloud.column("intensity")[0], 0.0);
    EXPECT_EQ(cloud.column("intensity_extra")[0], static_cast<double>(0.1F));
    EXPECT_EQ(load<std::int64_t>(cloud.points.records.data() + cloud.layout.find("stamp")->offset),
              -9007199254740993);
}

TEST(Las, TheHeaderSaysWhatIsInTheFile)
{
    PointLayout const layout{{"x", FieldType::Double},
                             {"y", FieldType::Double},
                             {"z", FieldType::Double},
                             {"return_number", FieldType::UInt8}};
    PointBlock block;
    block.resize(3, layout);
    for (std::size_t i = 0; i < 3; ++i) {
        char* const record = block.records.data() + i * layout.stride();
        store(record, static_cast<double>(i));
        store(record + 8, -static_cast<double>(i));
        store(record + 16, 7.0);
        store(record + 24, static_cast<std::uint8_t>(i));
    }
    std::ostringstream stream;
    LasWriter writer(stream, "cloud.las", layout, {"", {1.0, 0.0, 0.0}, 0.001});
    std::vector<char> buffer;
    writer.write(writer.convert(block, Numbers{1e9, 1e9, 1e9}, buffer), 3);
    writer.write({}, 0);
    writer.finish();
    std::string const bytes = stream.str();
    ASSERT_EQ(bytes.size(), 375U + 3 * 30U);
    EXPECT_EQ(loadLittleEndian<std::uint16_t>(&bytes[6]), 17) << "standard GPS time, and no GeoTIFF";
    EXPECT_EQ(loadLittleEndian<std::uint32_t>(&bytes[107]), 0U);
    EXPECT_EQ(loadLittleEndian<std::uint64_t>(&bytes[247]), 3U);
    EXPECT_EQ(loadLittleEndian<std::uint64_t>(&bytes[255]), 2U) << "returns 0 and 1";
    EXPECT_EQ(loadLittleEndian<std::uint64_t>(&bytes[263]), 1U);
    EXPECT_EQ(loadLittleEndian<double>(&bytes[179]), 2.0);  // highest x
    EXPECT_EQ(loadLittleEndian<double>(&bytes[187]), 0.0);  // lowest x
    EXPECT_EQ(loadLittleEndian<double>(&bytes[195]), 0.0);  // highest y
    EXPECT_EQ(loadLittleEndian<double>(&bytes[203]), -2.0); // lowest y
    EXPECT_EQ(loadLittleEndian<double>(&bytes[211]), 7.0);
    EXPECT_EQ(loadLittleEndian<double>(&bytes[219]), 7.0);
    EXPECT_EQ(loadLittleEndian<std::int32_t>(&bytes[375]), -1000);
}

TEST(Las, AFileMayHaveNoPoint)
{
    PointLayout const layout{{"x", FieldType::Double}, {"y", FieldType::Double}, {"z", FieldType::Double}};
    EXPECT_EQ(writtenAndRead(layout, {}, {}).size(), 0U);
}

TEST(Las, WhatDoesNotFitIsRefused)
{
    PointLayout layout{{"x", FieldType::Double},
                       {"y", FieldType::Double},
                       {"z", FieldType::Double},
                       {"return_number", FieldType::UInt8}};
    PointBlock block;
    block.resize(1, layout);
    store(block.records.data(), 3000.0);
    store(block.records.data() + 8, 0.0);
    store(block.records.data() + 16, 0.0);
    store(block.records.data() + 24, std::uint8_t{1});
    EXPECT_EQ(
        failureOf([&] { writtenAndRead(layout, block, {0.0}); }),
        "cloud.las: the coordinate 3000.000 m is too far from 0.000 m for LAS in steps of 0.000001 m; write "
        "another format");
    store(block.records.data(), 0.0);
    store(block.records.data() + 24, std::uint8_t{16});
    EXPECT_EQ(
        failureOf([&] { writtenAndRead(layout, block, {0.0}); }),
        "cloud.las: LAS has 4 bits for the return_number, too few for the value 16; write another format");
    layout.add("a name of more than thirty-two bytes", FieldType::Float);
    EXPECT_NE(failureOf([&] { writtenAndRead(layout, block, {0.0}); }), "");
}
