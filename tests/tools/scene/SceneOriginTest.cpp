#include "tools/scene/SceneOrigin.h"

#include <gtest/gtest.h>

namespace
{

using namespace oV::Roamscan::tool;

} // namespace

TEST(SceneOrigin, IsTheMiddleOfTheBoundsInWholeMetres)
{
    PathScene scene;
    scene.line = {{500000.25, 5400000.0, 10.0}, {500010.5, 5400003.0, -20.0}};
    EXPECT_EQ(sceneOrigin(scene), (ScenePoint{500005.0, 5400002.0, -5.0}));
}

TEST(SceneOrigin, CountsMarkersToo)
{
    PathScene scene;
    scene.line = {{0.0, 0.0, 0.0}};
    scene.markers = {{"a", {10.0, -20.0, 30.0}, 0.01}};
    EXPECT_EQ(sceneOrigin(scene), (ScenePoint{5.0, -10.0, 15.0}));
}

TEST(SceneOrigin, OfAnEmptySceneIsZero)
{
    EXPECT_EQ(sceneOrigin({}), ScenePoint{});
}

TEST(SceneOrigin, OfHugeCoordinatesIsFinite)
{
    PathScene scene;
    scene.line = {{-1e38, 0.0, 0.0}, {1e38, 0.0, 0.0}};
    EXPECT_EQ(sceneOrigin(scene), ScenePoint{});
}
