#include "tools/scene/GltfWriter.h"

#include "tests/support/ByteStrings.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan::tool;
using support::bytes;
using support::f32;
using support::u32;

std::string written(PathScene const& scene, GltfForm form)
{
    std::ostringstream stream;
    writeGltf(scene, form, stream);
    return stream.str();
}

nlohmann::json writtenJson(PathScene const& scene)
{
    return nlohmann::json::parse(written(scene, GltfForm::Text));
}

PathScene twoCorners()
{
    PathScene scene;
    scene.name = "walk";
    scene.line = {{500000.25, 5400000.5, 100.0}, {500002.0, 5400001.5, 104.0}};
    return scene;
}

} // namespace

TEST(GltfWriter, PutsDoubleCoordinatesIntoTheOriginAndTheRestIntoFloats)
{
    nlohmann::json json = writtenJson(twoCorners());
    EXPECT_EQ(json["asset"]["generator"].get<std::string>().substr(0, 9), "roamscan ");
    json["asset"].erase("generator");
    EXPECT_EQ(json, nlohmann::json::parse(R"({
        "asset": {"version": "2.0"},
        "scene": 0,
        "scenes": [{"nodes": [2]}],
        "nodes": [
            {"name": "path", "mesh": 0},
            {"name": "origin", "translation": [500001.0, 5400001.0, 102.0], "children": [0]},
            {"name": "walk", "rotation": [-0.7071067811865476, 0.0, 0.0, 0.7071067811865476], "children": [1]}
        ],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "mode": 3, "material": 0}]}],
        "materials": [{"pbrMetallicRoughness": {"baseColorFactor": [0.8, 0.1, 0.1, 1.0], "metallicFactor": 0.0}}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "type": "VEC3", "count": 2,
                       "min": [-0.75, -0.5, -2.0], "max": [1.0, 0.5, 2.0]}],
        "bufferViews": [{"buffer": 0, "byteLength": 24, "target": 34962}],
        "buffers": [{"byteLength": 24,
                     "uri": "data:application/octet-stream;base64,AABAvwAAAL8AAADAAACAPwAAAD8AAABA"}]
    })"));
}

TEST(GltfWriter, HasTheSameNumbersInTheBinaryForm)
{
    std::string const file = written(twoCorners(), GltfForm::Binary);
    std::string const numbers = f32({-0.75F, -0.5F, -2.0F, 1.0F, 0.5F, 2.0F});
    ASSERT_EQ(file.size() % 4, 0U);
    EXPECT_EQ(file.substr(0, 8), "glTF" + u32(2));
    EXPECT_EQ(file.substr(8, 4), u32(static_cast<std::uint32_t>(file.size())));
    EXPECT_EQ(file.substr(file.size() - 24), numbers);
    EXPECT_EQ(file.substr(file.size() - 32, 8), u32(24) + bytes({'B', 'I', 'N', 0}));
    nlohmann::json json = nlohmann::json::parse(file.substr(20, file.size() - 20 - 32));
    nlohmann::json text = writtenJson(twoCorners());
    text["buffers"][0].erase("uri");
    EXPECT_EQ(json, text);
}

TEST(GltfWriter, DrawsMarkersAsNodesThatShareASphere)
{
    PathScene scene = twoCorners();
    scene.markers = {{"Node_1", {500000.25, 5400000.5, 100.0}, 0.01},
                     {"Node_2.5", {500002.0, 5400001.5, 104.0}, 0.5}};
    nlohmann::json const json = writtenJson(scene);
    EXPECT_EQ(json["nodes"].size(), 5U);
    EXPECT_EQ(json["nodes"][1],
              nlohmann::json::parse(R"({"name": "Node_1", "mesh": 1, "translation": [-0.75, -0.5, -2.0],
                                               "scale": [0.01, 0.01, 0.01]})"));
    EXPECT_EQ(json["nodes"][2],
              nlohmann::json::parse(R"({"name": "Node_2.5", "mesh": 1, "translation": [1.0, 0.5, 2.0],
                                               "scale": [0.5, 0.5, 0.5]})"));
    EXPECT_EQ(json["nodes"][3]["children"], nlohmann::json({0, 1, 2}));
    EXPECT_EQ(json["meshes"].size(), 2U);
    EXPECT_EQ(json["meshes"][1],
              nlohmann::json::parse(R"({"primitives": [{"attributes": {"NORMAL": 1, "POSITION": 1},
                                                "indices": 2, "mode": 4, "material": 1}]})"));
    EXPECT_EQ(json["accessors"][1],
              nlohmann::json::parse(R"({"bufferView": 1, "componentType": 5126, "type": "VEC3",
                                                   "count": 66, "min": [-1.0, -1.0, -1.0], "max": [1.0, 1.0, 1.0]})"));
    EXPECT_EQ(
        json["accessors"][2],
        nlohmann::json::parse(R"({"bufferView": 2, "componentType": 5123, "type": "SCALAR", "count": 384})"));
    EXPECT_EQ(
        json["bufferViews"][2],
        nlohmann::json::parse(R"({"buffer": 0, "byteOffset": 816, "byteLength": 768, "target": 34963})"));
    EXPECT_EQ(json["buffers"][0]["byteLength"], 24 + 66 * 12 + 384 * 2);
}

TEST(GltfWriter, DrawsManyMarkersAsPoints)
{
    PathScene scene;
    scene.markers.assign(PathScene::mostSpheres + 1, {"Node_0", {1.0, 2.0, 3.0}, 0.01});
    scene.markers.front().position = {3.0, 2.0, 3.0};
    nlohmann::json const json = writtenJson(scene);
    EXPECT_EQ(json["nodes"].size(), 3U);
    EXPECT_EQ(json["nodes"][0], nlohmann::json::parse(R"({"name": "nodes", "mesh": 0})"));
    EXPECT_EQ(json["meshes"][0]["primitives"][0]["mode"], 0);
    EXPECT_EQ(json["accessors"][0]["count"], 10'001);
    EXPECT_EQ(json["buffers"][0]["byteLength"], 12 * 10'001);
    scene.markers.pop_back();
    EXPECT_EQ(writtenJson(scene)["nodes"].size(), 10'002U);
}

TEST(GltfWriter, LeavesOutALineOfOneCorner)
{
    PathScene scene;
    scene.line = {{1.0, 2.0, 3.0}};
    scene.markers = {{"Node_0", {1.0, 2.0, 3.0}, 0.01}};
    nlohmann::json const json = writtenJson(scene);
    EXPECT_EQ(json["nodes"][0]["name"], "Node_0");
    EXPECT_EQ(json["nodes"].size(), 3U);
}
