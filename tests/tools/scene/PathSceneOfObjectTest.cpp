#include "tools/scene/PathSceneOfObject.h"

#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>

#include <gtest/gtest.h>

#include <limits>
#include <variant>

namespace
{

using namespace oV::Roamscan::tool;
using Bv_1_1::SmartPtr;
using CreateType = Bv_1_1::BaseNode::CreateType;

template <typename T>
void set(oV::Object& object, unsigned int index, T const& value)
{
    std::get<oV::ObjectAttribute<T>*>(object.attribute(index))->assignFrom(&value, nullptr, nullptr);
}

SmartPtr<oV::Sphere> sphere(wchar_t const* name, ScenePoint const& position, double size)
{
    SmartPtr<oV::Sphere> result(new oV::Sphere(CreateType::Fresh, nullptr));
    result->setName(name, 0);
    set(*result, oV::Sphere::positionAttribute, position);
    set(*result, oV::Sphere::sizeAttribute, size);
    return result;
}

} // namespace

TEST(PathSceneOfObject, TakesLinesAndSpheres)
{
    SmartPtr<oV::Transform> const object(new oV::Transform(CreateType::Fresh, nullptr));
    object->setName(L"walk \x00E9", 0);
    object->addChild(sphere(L"Node_1", {1.0, 2.0, 3.0}, 0.01).get(), 48);
    SmartPtr<oV::Line> const line(new oV::Line(CreateType::Fresh, nullptr));
    line->appendPoint({1.0, 2.0, 3.0});
    line->appendPoint({500000.25, 5400000.125, 0.1});
    object->addChild(line.get(), 48);

    PathScene const scene = pathSceneOf(*object);
    EXPECT_EQ(scene.name, "walk \xC3\xA9");
    EXPECT_EQ(scene.line, (std::vector<ScenePoint>{{1.0, 2.0, 3.0}, {500000.25, 5400000.125, 0.1}}));
    ASSERT_EQ(scene.markers.size(), 1U);
    EXPECT_EQ(scene.markers[0].name, "Node_1");
    EXPECT_EQ(scene.markers[0].position, (ScenePoint{1.0, 2.0, 3.0}));
    EXPECT_EQ(scene.markers[0].radius, 0.01);
    EXPECT_EQ(scene.ignoredPoints, 0U);
    EXPECT_EQ(scene.ignoredMarkers, 0U);
}

TEST(PathSceneOfObject, LeavesOutAndCountsWhatDoesNotFitAFloat)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    SmartPtr<oV::Transform> const object(new oV::Transform(CreateType::Fresh, nullptr));
    object->addChild(sphere(L"a", {nan, 0.0, 0.0}, 0.01).get(), 48);
    object->addChild(sphere(L"b", {0.0, 0.0, 0.0}, infinity).get(), 48);
    SmartPtr<oV::Line> const line(new oV::Line(CreateType::Fresh, nullptr));
    line->appendPoint({0.0, -infinity, 0.0});
    line->appendPoint({0.0, 0.0, 1e39});
    line->appendPoint({-1.7e38, 0.0, 0.0});
    line->appendPoint({1.8e38, 0.0, 0.0});
    object->addChild(line.get(), 48);

    PathScene const scene = pathSceneOf(*object);
    EXPECT_EQ(scene.line, (std::vector<ScenePoint>{{-1.7e38, 0.0, 0.0}}));
    EXPECT_TRUE(scene.markers.empty());
    EXPECT_EQ(scene.ignoredPoints, 3U);
    EXPECT_EQ(scene.ignoredMarkers, 2U);
}
