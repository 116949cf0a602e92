#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Line;
using oV::Object;
using oV::ObjectAttribute;
using oV::Sphere;
using oV::Transform;
using CreateType = Bv_1_1::BaseNode::CreateType;

template <typename T>
SmartPtr<T> make(T const* source = nullptr, CreateType type = CreateType::Fresh)
{
    SmartPtr<T> object(new T(type, source));
    EXPECT_TRUE(object->init(type, source));
    return object;
}

} // namespace

TEST(Object, HasNoNameAndNoChildrenAtFirst)
{
    auto const group = make<Transform>();
    EXPECT_TRUE(group->getName().isNil());
    EXPECT_TRUE(group->children().empty());
    EXPECT_EQ(group->parent(), nullptr);
    EXPECT_EQ(group->parEx(), nullptr);
}

TEST(Object, NameIsTheAttributeZero)
{
    auto const group = make<Transform>();
    auto* const name = std::get<ObjectAttribute<String>*>(group->attribute(0));
    String const text(L"walk");
    EXPECT_TRUE(name->assignFrom(&text, nullptr, nullptr));
    EXPECT_EQ(group->getName(), String(L"walk"));
    EXPECT_TRUE(group->setName(L"run", 0));
    EXPECT_EQ(name->value(), String(L"run"));
    EXPECT_TRUE(group->setName(String::NIL, 0));
    EXPECT_TRUE(group->getName().isNil());
}

TEST(Object, HasNoAttributeAtAnotherIndex)
{
    auto const group = make<Transform>();
    for (unsigned int const index : {1U, 7U, 9U, 16U, 48U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(std::holds_alternative<std::monostate>(group->attribute(index)));
    }
}

TEST(Object, AttributeRefusesANullPointer)
{
    auto const group = make<Transform>();
    group->setName(L"walk", 0);
    EXPECT_FALSE(
        std::get<ObjectAttribute<String>*>(group->attribute(0))->assignFrom(nullptr, nullptr, nullptr));
    EXPECT_EQ(group->getName(), String(L"walk"));
}

TEST(Object, KeepsChildrenInTheOrderOfTheCallsWithTheirPlaces)
{
    auto const group = make<Transform>();
    auto const line = make<Line>();
    auto const sphere = make<Sphere>();
    EXPECT_TRUE(group->addChild(line.get(), 48));
    EXPECT_TRUE(group->addChild(sphere.get(), -3));
    ASSERT_EQ(group->children().size(), 2U);
    EXPECT_EQ(group->children()[0].object, line);
    EXPECT_EQ(group->children()[0].place, 48);
    EXPECT_EQ(group->children()[1].object, sphere);
    EXPECT_EQ(group->children()[1].place, -3);
    EXPECT_EQ(line->parent(), group.get());
}

TEST(Object, OwnsItsChildren)
{
    auto group = make<Transform>();
    auto const line = make<Line>();
    group->addChild(line.get(), 48);
    EXPECT_EQ(line->referenceCount(), 2U);
    group = nullptr;
    EXPECT_EQ(line->referenceCount(), 1U);
    EXPECT_EQ(line->parent(), nullptr);
}

TEST(Object, TakesNoNullChild)
{
    auto const group = make<Transform>();
    EXPECT_FALSE(group->addChild(nullptr, 48));
    EXPECT_TRUE(group->children().empty());
}

TEST(Object, TakesNoChildTwice)
{
    auto const first = make<Transform>();
    auto const second = make<Transform>();
    auto const line = make<Line>();
    EXPECT_TRUE(first->addChild(line.get(), 48));
    EXPECT_FALSE(first->addChild(line.get(), 48));
    EXPECT_FALSE(second->addChild(line.get(), 48));
    EXPECT_EQ(first->children().size(), 1U);
    EXPECT_TRUE(second->children().empty());
    EXPECT_EQ(line->referenceCount(), 2U);
}

TEST(Object, CannotBeUnderItself)
{
    auto const top = make<Transform>();
    auto const middle = make<Transform>();
    auto const bottom = make<Transform>();
    EXPECT_FALSE(top->addChild(top.get(), 48));
    EXPECT_TRUE(top->addChild(middle.get(), 48));
    EXPECT_TRUE(middle->addChild(bottom.get(), 48));
    EXPECT_FALSE(bottom->addChild(top.get(), 48));
    EXPECT_FALSE(middle->addChild(top.get(), 48));
    EXPECT_EQ(top->referenceCount(), 1U);
}

TEST(Object, AChildThatOutlivesItsParentCanBeAddedElsewhere)
{
    auto first = make<Transform>();
    auto const second = make<Transform>();
    auto const line = make<Line>();
    first->addChild(line.get(), 48);
    first = nullptr;
    EXPECT_TRUE(second->addChild(line.get(), 48));
    EXPECT_EQ(line->parent(), second.get());
}

TEST(Object, InitCopiesTheNameOfTheSourceButNotItsChildren)
{
    auto const source = make<Transform>();
    auto const line = make<Line>();
    source->setName(L"walk", 0);
    source->addChild(line.get(), 48);
    auto const copy = make<Transform>(source.get());
    EXPECT_EQ(copy->getName(), String(L"walk"));
    EXPECT_TRUE(copy->children().empty());
}

TEST(Object, InitIgnoresTheSourceForTheTypeWithoutOne)
{
    auto const source = make<Transform>();
    source->setName(L"walk", 0);
    EXPECT_TRUE(make<Transform>(source.get(), CreateType::NoSource)->getName().isNil());
}

TEST(Object, CopiesTheNameFromEveryOtherClassOfObject)
{
    auto const line = make<Line>();
    line->setName(L"walk", 0);
    auto const sphere = make<Sphere>();
    EXPECT_TRUE(sphere->copyFrom(line.get()));
    EXPECT_EQ(sphere->getName(), String(L"walk"));
    EXPECT_FALSE(sphere->copyFrom(nullptr));
}

TEST(Object, ClassRecordsNameTheClassesAndTheirParents)
{
    EXPECT_EQ(std::wstring(Object::Class()->name()), L"Object");
    EXPECT_EQ(Object::Class()->parent(), oV::Observer::Class());
    for (auto const* const record : {Transform::Class(), Line::Class(), Sphere::Class()}) {
        EXPECT_EQ(record->parent(), Object::Class());
        SmartPtr<Bv_1_1::BaseNode> const made(record->create());
        ASSERT_TRUE(made);
        EXPECT_EQ(made->getClassType(), record);
    }
    EXPECT_EQ(std::wstring(Transform::Class()->name()), L"Transform");
    EXPECT_EQ(std::wstring(Line::Class()->name()), L"Line");
    EXPECT_EQ(std::wstring(Sphere::Class()->name()), L"Sphere");
    EXPECT_EQ(Object::Class()->create(), nullptr);
}
