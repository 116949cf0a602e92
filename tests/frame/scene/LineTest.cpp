#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/ObjNames.h>
#include <roamscan/frame/scene/Sphere.h>

#include <gtest/gtest.h>

#include <variant>
#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using Bv_1_1::Vec3d;
using oV::Line;
using oV::ObjNames;
using CreateType = Bv_1_1::BaseNode::CreateType;

std::vector<Vec3d<double>> pointsOf(Line const& line)
{
    return {line.points().begin(), line.points().end()};
}

} // namespace

TEST(Line, KeepsPointsInTheOrderOfTheCalls)
{
    SmartPtr<Line> const line(new Line(CreateType::Fresh, nullptr));
    EXPECT_TRUE(line->points().empty());
    line->appendPoint({1.0, 2.0, 3.0});
    line->appendPoint({-1.0, 0.0, 0.1});
    line->appendPoint({1.0, 2.0, 3.0});
    EXPECT_EQ(pointsOf(*line),
              (std::vector<Vec3d<double>>{{1.0, 2.0, 3.0}, {-1.0, 0.0, 0.1}, {1.0, 2.0, 3.0}}));
}

TEST(Line, KeepsItsKey)
{
    SmartPtr<Line> const line(new Line(CreateType::Fresh, nullptr));
    EXPECT_TRUE(line->key().isNil());
    line->setKey(ObjNames::key(16));
    EXPECT_EQ(line->key(), String(L"Line"));
}

TEST(Line, HasItsNameAsTheOnlyAttribute)
{
    SmartPtr<Line> const line(new Line(CreateType::Fresh, nullptr));
    EXPECT_TRUE(std::holds_alternative<oV::ObjectAttribute<String>*>(line->attribute(0)));
    EXPECT_TRUE(std::holds_alternative<std::monostate>(line->attribute(7)));
}

TEST(Line, InitCopiesAnotherLine)
{
    SmartPtr<Line> const source(new Line(CreateType::Fresh, nullptr));
    source->setName(L"walk", 0);
    source->setKey(L"Line");
    source->appendPoint({1.0, 2.0, 3.0});
    SmartPtr<Line> const copy(new Line(CreateType::Fresh, source.get()));
    EXPECT_TRUE(copy->init(CreateType::Fresh, source.get()));
    EXPECT_EQ(copy->getName(), String(L"walk"));
    EXPECT_EQ(copy->key(), String(L"Line"));
    EXPECT_EQ(pointsOf(*copy), (std::vector<Vec3d<double>>{{1.0, 2.0, 3.0}}));
}

TEST(Line, KeepsItsPointsWhenTheSourceIsNoLine)
{
    SmartPtr<oV::Sphere> const source(new oV::Sphere(CreateType::Fresh, nullptr));
    SmartPtr<Line> const line(new Line(CreateType::Fresh, nullptr));
    line->appendPoint({1.0, 2.0, 3.0});
    EXPECT_TRUE(line->copyFrom(source.get()));
    EXPECT_EQ(line->points().size(), 1U);
}

TEST(ObjNames, OnlyTheLineHasAName)
{
    EXPECT_EQ(ObjNames::key(16), String(L"Line"));
    EXPECT_TRUE(ObjNames::key(0).isNil());
    EXPECT_TRUE(ObjNames::key(15).isNil());
    EXPECT_TRUE(ObjNames::key(0xFFFFFFFF).isNil());
    EXPECT_EQ(&ObjNames::key(16), &ObjNames::key(16));
}
