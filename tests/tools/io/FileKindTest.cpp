#include "tools/io/FileKind.h"

#include "tests/support/SharedData.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using namespace std::string_literals;
using support::failureOf;
using support::ToolFixture;

class FileKindTest : public ToolFixture
{};

} // namespace

TEST(FileKind, IsRecognisedByTheFirstBytes)
{
    for (auto const& [bytes, kind] : std::vector<std::pair<std::string, FileKind>>{
             {"ply\nformat ascii 1.0\n", FileKind::PlyCloud},
             {"ply\r\nformat", FileKind::PlyCloud},
             {"# .PCD v0.7 - Point Cloud Data file format\n", FileKind::PcdCloud},
             {"LASF\0\0\0\0\0\0\0\0\0\0\0\0"s, FileKind::LasCloud},
             {"\x89PNG\r\n\x1a\n", FileKind::Picture},
             {"\xFF\xD8\xFF\xE0", FileKind::Picture},
             {"glTF\2\0\0\0\0\1\0\0"s, FileKind::Gltf},
             {" {\"asset\": {\"version\": \"2.0\"}}", FileKind::Gltf},
             {"{\n \"format\": \"roamscan building\",", FileKind::Building},
             {"{\"endTime\": 1, \"horizontalAngle\": 0.5", FileKind::ScanMetadata},
             {"[1, 2]", FileKind::JsonText},
             {"\x1F\x8B\x08\0\1\2\3\4\5\6\7\x08\x09"s, FileKind::Compressed},
             {"#ROSBAG V2.0\n", FileKind::Recording},
             {"# ground truth\n\n1 2 3 4 5 6 7 8\n", FileKind::TumPoses},
             {"1 0 0 0 0 1 0 0 0 0 1 0\n", FileKind::KittiPoses},
             {"#timestamp\n1403715524907143168,1,2,3,4,5,6,7,8\n", FileKind::EurocPoses},
             {"time,x,y,z,qw,qx,qy,qz\n1", FileKind::CsvPoses},
             {"\x10\0\0\0\0\0\0\0\x04\0\0\0rest"s, FileKind::RecordingStream},
             {"", FileKind::Unknown},
             {"# only a comment", FileKind::Unknown},
             {"1 2 3 4 5 6 7\n", FileKind::Unknown},
             {"a b c d e f g h\n", FileKind::Unknown},
             {std::string(100, '\0'), FileKind::Unknown},
         })
    {
        EXPECT_EQ(static_cast<int>(kindOf(bytes)), static_cast<int>(kind)) << bytes;
        EXPECT_EQ(describe(kind).empty(), kind == FileKind::Unknown);
    }
}

TEST_F(FileKindTest, AStreamIsRecognised)
{
    for (bool const withNode : {false, true}) {
        TrajectoryData data;
        if (withNode) {
            data.nodes.emplace_back(1.0);
        }
        std::ostringstream stream;
        writeTrajectory(data, stream, "memory");
        EXPECT_EQ(kindOfFile(write("a", stream.str())), FileKind::RecordingStream);
    }
}

TEST_F(FileKindTest, WhatIsNoFileIsUnknown)
{
    EXPECT_EQ(kindOfFile(file("missing")), FileKind::Unknown);
    EXPECT_EQ(kindOfFile(file(".")), FileKind::Unknown);
}

TEST_F(FileKindTest, AStreamReaderSaysWhatItFoundInstead)
{
    auto const cloud = write("a.ply", "ply\nformat ascii 1.0\n");
    std::string const expected = cloud.string() + ": this is a PLY cloud; see roamscan place";
    EXPECT_EQ(failureOf([&] { static_cast<void>(readTrajectoryFile(cloud)); }), expected);
    EXPECT_EQ(failureOf([&] { static_cast<void>(readSensorFile(cloud)); }), expected);
    EXPECT_EQ(failureOf([&] { static_cast<void>(readRecordingFile(cloud)); }), expected);
    auto const tum = write("b.txt", "1 2 3 4 5 6 7 8");
    EXPECT_EQ(failureOf([&] { static_cast<void>(readTrajectoryFile(tum)); }),
              tum.string() + ": this is a text of TUM poses; see roamscan import --format tum");
    auto const shortPly = write("c.ply", "ply\n");
    EXPECT_EQ(failureOf([&] { static_cast<void>(readTrajectoryFile(shortPly)); }),
              shortPly.string() + ": this is a PLY cloud; see roamscan place");
}

TEST_F(FileKindTest, CloudsOfOtherProgramsAreRecognised)
{
    std::filesystem::path const folder = support::sharedData("clouds");
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "missing: " << folder;
    }
    std::size_t recognised = 0;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        std::string const ending = entry.path().extension().string();
        FileKind const expected = ending == ".las"   ? FileKind::LasCloud
                                  : ending == ".ply" ? FileKind::PlyCloud
                                  : ending == ".pcd" ? FileKind::PcdCloud
                                                     : FileKind::Unknown;
        if (expected != FileKind::Unknown) {
            EXPECT_EQ(static_cast<int>(kindOfFile(entry.path())), static_cast<int>(expected)) << entry.path();
            ++recognised;
        }
    }
    EXPECT_GT(recognised, 5U);
}
