#include "tools/scene/ObjWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan::tool;

std::string written(PathScene const& scene)
{
    std::ostringstream stream;
    writeObj(scene, stream);
    return stream.str();
}

std::size_t count(std::string const& text, std::string const& piece)
{
    std::size_t found = 0;
    for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
        ++found;
    }
    return found;
}

} // namespace

TEST(ObjWriter, WritesTheLineWithAllDigits)
{
    PathScene scene;
    scene.name = "walk";
    scene.line = {{500000.0001, 5400000.0002, 0.1}, {1.0, -2.0, 3.5}, {0.0, 0.0, 1e-20}};
    EXPECT_EQ(written(scene),
              "# metres, z up\n"
              "o walk\n"
              "v 500000.0001 5400000.0002 0.1\n"
              "v 1 -2 3.5\n"
              "v 0 0 1e-20\n"
              "l 1 2 3\n");
}

TEST(ObjWriter, WritesAMarkerAsAnOctahedron)
{
    PathScene scene;
    scene.name = "walk";
    scene.line = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}};
    scene.markers = {{"Node_0.5", {10.0, 20.0, 30.0}, 0.25}};
    EXPECT_EQ(written(scene),
              "# metres, z up\n"
              "o walk\n"
              "v 0 0 0\n"
              "v 1 0 0\n"
              "l 1 2\n"
              "o Node_0.5\n"
              "v 10.25 20 30\n"
              "v 9.75 20 30\n"
              "v 10 20.25 30\n"
              "v 10 19.75 30\n"
              "v 10 20 30.25\n"
              "v 10 20 29.75\n"
              "f 3 5 7\n"
              "f 5 4 7\n"
              "f 4 6 7\n"
              "f 6 3 7\n"
              "f 5 3 8\n"
              "f 4 5 8\n"
              "f 6 4 8\n"
              "f 3 6 8\n");
}

TEST(ObjWriter, BreaksALongLineIntoElementsThatMeet)
{
    PathScene scene;
    for (int i = 0; i < 65; ++i) {
        scene.line.push_back({static_cast<double>(i), 0.0, 0.0});
    }
    std::string const text = written(scene);
    EXPECT_EQ(count(text, "\nl "), 2U);
    EXPECT_NE(text.find("\nl 1 2 3 "), std::string::npos);
    EXPECT_NE(text.find(" 63 64\nl 64 65\n"), std::string::npos) << text;
}

TEST(ObjWriter, LeavesOutALineOfOneCorner)
{
    PathScene scene;
    scene.line = {{1.0, 2.0, 3.0}};
    scene.markers = {{"Node_0", {1.0, 2.0, 3.0}, 0.01}};
    EXPECT_EQ(count(written(scene), "\nl "), 0U);
    EXPECT_EQ(count(written(scene), "\nv "), 6U);
}

TEST(ObjWriter, WritesManyMarkersAsPoints)
{
    PathScene scene;
    scene.markers.assign(PathScene::mostSpheres + 1, {"Node_0", {1.0, 2.0, 3.0}, 0.01});
    std::string const text = written(scene);
    EXPECT_EQ(count(text, "\nv 1 2 3\n"), 10'001U);
    EXPECT_EQ(count(text, "\no "), 1U);
    EXPECT_EQ(count(text, "\np "), 157U); // 64 to an element
    EXPECT_EQ(text.substr(text.rfind("\np ")).substr(0, 9), "\np 9985 9");
    EXPECT_EQ(text.substr(text.size() - 7), " 10001\n");
}

TEST(ObjWriter, KeepsANameOnItsLine)
{
    PathScene scene;
    scene.name = "a\nf 1 1 1";
    scene.line = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}};
    EXPECT_NE(written(scene).find("\no a?f 1 1 1\n"), std::string::npos);
}
