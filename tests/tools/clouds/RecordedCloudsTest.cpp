/// @file
/// Clouds that other programs wrote.

#include "tests/support/SharedData.h"
#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace
{

using support::CloudTable;
using Numbers = std::vector<double>;

class RecordedClouds : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::is_directory(folder_)) {
            GTEST_SKIP() << "there are no clouds in " << folder_;
        }
    }

    [[nodiscard]] CloudTable read(std::string const& name) const
    {
        return support::readCloud(folder_ / name);
    }

    /// The first point's position and time.
    [[nodiscard]] static Numbers firstPoint(CloudTable const& cloud)
    {
        return {cloud.column("x").at(0),
                cloud.column("y").at(0),
                cloud.column("z").at(0),
                cloud.column("gps_time").at(0)};
    }

    static void expectNear(Numbers const& actual, Numbers const& expected)
    {
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t i = 0; i < actual.size(); ++i) {
            EXPECT_NEAR(actual[i], expected[i], 1e-6) << i;
        }
    }

private:
    std::filesystem::path const folder_ = support::sharedData("clouds");
};

} // namespace

TEST_F(RecordedClouds, LasFilesOfTwoVersions)
{
    CloudTable const small = read("1.2_1.las");
    ASSERT_EQ(small.size(), 1U);
    expectNear(firstPoint(small), {470692.44, 4602888.9, 16.0, 1205902800.0});
    expectNear(firstPoint(read("1.2_3.las")), {470692.44, 4602888.9, 16.0, 1205902800.0});

    CloudTable const coloured = read("1.2-with-color.las");
    ASSERT_EQ(coloured.size(), 1065U);
    expectNear(firstPoint(coloured), {637012.24, 849028.31, 431.66, 245380.78254962614});
    EXPECT_EQ(coloured.column("gps_time")[0], 245380.78254962614);
    EXPECT_EQ(coloured.column("red")[0], 68.0);
    EXPECT_EQ(coloured.column("green")[0], 77.0);
    EXPECT_EQ(coloured.column("blue")[0], 88.0);
    EXPECT_EQ(coloured.column("intensity")[0], 143.0);
    EXPECT_EQ(coloured.column("return_number")[0], 1.0);
    EXPECT_EQ(coloured.column("number_of_returns")[0], 1.0);
    EXPECT_EQ(coloured.column("scan_direction_flag")[0], 1.0);
    EXPECT_EQ(coloured.column("scan_angle_rank")[0], -9.0);
    EXPECT_EQ(coloured.column("user_data")[0], 132.0);
    EXPECT_EQ(coloured.column("point_source_id")[0], 7326.0);

    CloudTable const newer = read("test1_4.las");
    ASSERT_EQ(newer.size(), 1000U);
    expectNear(firstPoint(newer), {1694510.386935, 1816497.966264, 5598.359613, 83177420.53400505});
}

TEST_F(RecordedClouds, LasExtraBytes)
{
    CloudTable const cloud = read("extrabytes.las");
    ASSERT_EQ(cloud.size(), 1065U);
    expectNear(firstPoint(cloud), {637012.24, 849028.31, 431.66, 245380.78254962614});
    // "Colors" repeats the colours; the 7 bytes of "Reserved" are 0; "Flags" are the returns.
    EXPECT_EQ(cloud.column("Colors_0"), cloud.column("red"));
    EXPECT_EQ(cloud.column("Colors_2"), cloud.column("blue"));
    EXPECT_EQ(cloud.column("Reserved_6"), Numbers(1065, 0.0));
    EXPECT_EQ(cloud.column("Flags_0"), cloud.column("return_number"));
    EXPECT_EQ(cloud.column("Flags_1"), cloud.column("number_of_returns"));
    EXPECT_EQ(cloud.column("Intensity_extra"), cloud.column("intensity"));
    EXPECT_EQ(cloud.column("Time")[0], 245380.0);
}

TEST_F(RecordedClouds, PcdFilesInBinaryAndText)
{
    CloudTable const binary = read("autzen-utm.pcd");
    ASSERT_EQ(binary.size(), 1065U);
    EXPECT_EQ(binary.layout.fields().size(), 16U);
    expectNear(firstPoint(binary), {494428.61, 4877455.58, 131.57, 245380.78254962614});
    EXPECT_EQ(binary.row(1064),
              (Numbers{494490.24,
                       4878741.67,
                       129.21,
                       116,
                       1,
                       1,
                       1,
                       0,
                       1,
                       9.0,
                       124,
                       7334,
                       249773.20172406783,
                       138,
                       107,
                       136}));
    CloudTable const text = read("utm17_space.pcd");
    ASSERT_EQ(text.size(), 10U);
    EXPECT_EQ(text.column("z")[0], static_cast<double>(170.76F)) << "its type is float";
}

TEST_F(RecordedClouds, PlyFilesInBinaryAndText)
{
    EXPECT_EQ(read("simple_text.ply").column("x"), (Numbers{-1.0, 0.0, 1.0}));
    EXPECT_EQ(read("simple_binary.ply").column("x"), (Numbers{-1.0, 0.0, 1.0}));
    EXPECT_EQ(read("mesh.ply").column("z"), (Numbers{0.0, 0.0, 0.0, 2.0}));
    CloudTable const extra = read("text_extradim.ply");
    ASSERT_EQ(extra.size(), 1U);
    EXPECT_EQ(extra.column("blue")[0], 64.0);
    EXPECT_EQ(extra.column("ny")[0], static_cast<double>(-0.00902114F));
}

TEST_F(RecordedClouds, Texts)
{
    CloudTable const plain = read("utm17_1.txt");
    ASSERT_EQ(plain.size(), 10U);
    EXPECT_EQ(plain.row(0), (Numbers{289814.15, 4320978.61, 170.76}));
    CloudTable const crlf = read("crlf_test.txt");
    ASSERT_EQ(crlf.size(), 10U);
    EXPECT_EQ(crlf.row(9), (Numbers{289818.50, 4320980.59, 170.58, 9.0}));
    EXPECT_EQ(crlf.fields().back(), "Intensity uchar");
}
