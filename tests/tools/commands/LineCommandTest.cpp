#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::ToolFixture;
using support::ToolRun;

class LineCommandTest : public ToolFixture
{
protected:
    [[nodiscard]] support::TestPath save(TrajectoryData const& data) const
    {
        std::ofstream stream(file("walk.trajectory"), std::ios::binary);
        writeTrajectory(data, stream, "walk.trajectory");
        return file("walk.trajectory");
    }

    /// Three nodes, seen from device 1 half a metre above the origin.
    static TrajectoryData threeNodes()
    {
        TrajectoryData data;
        data.nodes.emplace_back(0.0, TrafoT<double>::Translation({500001, 5400002, 3}));
        data.nodes.emplace_back(0.5, TrafoT<double>::Translation({500002, 5400002, 3}));
        data.nodes.emplace_back(1.0, TrafoT<double>::Translation({500002, 5400004, 3}));
        data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
        data.devicePositions[Device::Device1] = TrafoT<double>::Translation({0, 0, 0.5});
        return data;
    }

    [[nodiscard]] ToolRun draw(std::string const& trajectory,
                               std::string const& output,
                               std::vector<std::string> const& more = {}) const
    {
        std::vector<std::string> words{"line", "--trajectory", trajectory, "--from", "1", "--to", "0"};
        words.insert(words.end(), more.begin(), more.end());
        words.push_back(file(output));
        return run(words);
    }
};

} // namespace

TEST_F(LineCommandTest, WritesObj)
{
    ToolRun const line = draw(save(threeNodes()), "walk.obj");
    EXPECT_EQ(line.status, 0) << line.err;
    EXPECT_EQ(line.out, file("walk.obj").string() + ": a line through 3 points\n");
    EXPECT_EQ(read("walk.obj"),
              "# metres, z up\n"
              "o walk\n"
              "v 500001 5400002 3.5\n"
              "v 500002 5400002 3.5\n"
              "v 500002 5400004 3.5\n"
              "l 1 2 3\n");
}

TEST_F(LineCommandTest, WritesGltfWithMarkers)
{
    ToolRun const line = draw(save(threeNodes()), "scene.gltf", {"--nodes"});
    EXPECT_EQ(line.status, 0) << line.err;
    EXPECT_EQ(line.out, file("scene.gltf").string() + ": a line through 3 points, 3 nodes as spheres\n");
    nlohmann::json const json = nlohmann::json::parse(read("scene.gltf"));
    std::vector<std::string> names;
    for (nlohmann::json const& node : json["nodes"]) {
        names.push_back(node["name"]);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"path", "Node_0", "Node_0.5", "Node_1", "origin", "walk"}));
    EXPECT_EQ(json["nodes"][4]["translation"], nlohmann::json({500002.0, 5400003.0, 4.0}));
    EXPECT_EQ(json["nodes"][1]["translation"], nlohmann::json({-1.0, -1.0, -0.5}));
}

TEST_F(LineCommandTest, WritesGlbWhateverTheCaseOfTheEnding)
{
    EXPECT_EQ(draw(save(threeNodes()), "walk.GLB").status, 0);
    EXPECT_EQ(read("walk.GLB").substr(0, 4), "glTF");
}

TEST_F(LineCommandTest, RefusesAnotherEnding)
{
    ToolRun const line = draw(save(threeNodes()), "walk.stl");
    EXPECT_EQ(line.status, 1);
    EXPECT_EQ(line.err,
              "roamscan: " + file("walk.stl").string() +
                  ": the format is unknown; name a file that ends in .gltf, .glb or .obj\n");
    EXPECT_EQ(names(), (std::vector<std::string>{"walk.trajectory"}));
}

TEST_F(LineCommandTest, NamesTheDeviceWithoutAPosition)
{
    TrajectoryData data = threeNodes();
    data.devicePositions.erase(Device::Device1);
    ToolRun const line = draw(save(data), "walk.glb");
    EXPECT_EQ(line.status, 1);
    EXPECT_EQ(line.err,
              "roamscan: " + file("walk.trajectory").string() +
                  ": it has no position for device 1; devices with a position: 0\n");
}

TEST_F(LineCommandTest, WritesNothingIfThereIsNothingToDraw)
{
    TrajectoryData data = threeNodes();
    data.nodes.clear();
    ToolRun const empty = draw(save(data), "walk.glb", {"--nodes"});
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.err,
              "roamscan: " + file("walk.trajectory").string() +
                  ": there is nothing to draw: it has fewer than two usable nodes\n");
    EXPECT_EQ(names(), (std::vector<std::string>{"walk.trajectory"}));
}

TEST_F(LineCommandTest, CountsNodesThatCannotBeDrawn)
{
    TrajectoryData data = threeNodes();
    // The interpolation that ends at the next node, at 1 s, makes that NaN.
    data.nodes[1].pose = TrafoT<double>::Translation({std::numeric_limits<double>::infinity(), 0, 0});
    data.nodes.emplace_back(2.0, TrafoT<double>::Translation({500003, 5400004, 3}));
    ToolRun const line = draw(save(data), "walk.obj", {"--nodes"});
    EXPECT_EQ(line.status, 0) << line.err;
    EXPECT_EQ(line.out,
              file("walk.obj").string() + ": a line through 2 points, 2 nodes as spheres\n" +
                  "  2 nodes ignored: the position is not finite or too far away\n");
}

TEST_F(LineCommandTest, DoesNotReplaceItsInput)
{
    auto const trajectory = save(threeNodes());
    std::filesystem::rename(trajectory, file("walk.obj"));
    std::string const before = read("walk.obj");
    ToolRun const line = draw(file("walk.obj"), "walk.obj");
    EXPECT_EQ(line.status, 1);
    EXPECT_EQ(read("walk.obj"), before);
}
