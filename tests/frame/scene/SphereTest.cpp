#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>

#include <gtest/gtest.h>

#include <variant>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using Bv_1_1::Vec3d;
using oV::ObjectAttribute;
using oV::Sphere;
using CreateType = Bv_1_1::BaseNode::CreateType;

SmartPtr<Sphere> makeSphere()
{
    return SmartPtr<Sphere>(new Sphere(CreateType::Fresh, nullptr));
}

} // namespace

TEST(Sphere, IsEmptyAtTheOriginAtFirst)
{
    auto const sphere = makeSphere();
    EXPECT_EQ(sphere->position(), (Vec3d<double>{0.0, 0.0, 0.0}));
    EXPECT_EQ(sphere->size(), 0.0);
}

TEST(Sphere, PositionIsTheAttributeSeven)
{
    auto const sphere = makeSphere();
    Vec3d<double> const position{1.0, -2.0, 0.1};
    auto* const attribute = std::get<ObjectAttribute<Vec3d<double>>*>(sphere->attribute(7));
    EXPECT_TRUE(attribute->assignFrom(&position, nullptr, nullptr));
    EXPECT_EQ(sphere->position(), position);
    EXPECT_FALSE(attribute->assignFrom(nullptr, nullptr, nullptr));
    EXPECT_EQ(sphere->position(), position);
}

TEST(Sphere, SizeIsTheAttributeNine)
{
    auto const sphere = makeSphere();
    double const size = 0.01;
    EXPECT_TRUE(
        std::get<ObjectAttribute<double>*>(sphere->attribute(9))->assignFrom(&size, nullptr, nullptr));
    EXPECT_EQ(sphere->size(), 0.01);
}

TEST(Sphere, HasAnAttributeForItsNameAndNoOthers)
{
    auto const sphere = makeSphere();
    EXPECT_TRUE(std::holds_alternative<ObjectAttribute<String>*>(sphere->attribute(0)));
    for (unsigned int const index : {1U, 6U, 8U, 10U}) {
        EXPECT_TRUE(std::holds_alternative<std::monostate>(sphere->attribute(index)));
    }
}

TEST(Sphere, InitCopiesAnotherSphere)
{
    auto const source = makeSphere();
    Vec3d<double> const position{1.0, 2.0, 3.0};
    double const size = 0.5;
    std::get<ObjectAttribute<Vec3d<double>>*>(source->attribute(7))->assignFrom(&position, nullptr, nullptr);
    std::get<ObjectAttribute<double>*>(source->attribute(9))->assignFrom(&size, nullptr, nullptr);
    source->setName(L"Node_1", 0);
    SmartPtr<Sphere> const copy(new Sphere(CreateType::Fresh, source.get()));
    EXPECT_TRUE(copy->init(CreateType::Fresh, source.get()));
    EXPECT_EQ(copy->position(), position);
    EXPECT_EQ(copy->size(), 0.5);
    EXPECT_EQ(copy->getName(), String(L"Node_1"));
}

TEST(Sphere, KeepsItsPositionWhenTheSourceIsNoSphere)
{
    SmartPtr<oV::Line> const source(new oV::Line(CreateType::Fresh, nullptr));
    auto const sphere = makeSphere();
    double const size = 0.5;
    std::get<ObjectAttribute<double>*>(sphere->attribute(9))->assignFrom(&size, nullptr, nullptr);
    EXPECT_TRUE(sphere->copyFrom(source.get()));
    EXPECT_EQ(sphere->size(), 0.5);
}
