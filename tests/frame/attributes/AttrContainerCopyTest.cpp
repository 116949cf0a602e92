#include "tests/frame/attributes/Watcher.h"
#include "tests/support/Attributes.h"

#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/ObserverRelationTable.h>
#include <roamscan/frame/observers/PreserveObserverRelation.h>

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace
{

using namespace support::attributes;
using oV::Observer;
TEST(AttrContainer, DuplicateCopiesNameCustomAttributesAndFlags)
{
    auto const source = initialisedContainer();
    source->setName(L"Box", 0);
    add(*source, L"A", 5)->setFlag(Attribute::weakValueFlag, true);
    add(*source, L"A", String(L"text"));
    SmartPtr<AttrContainer> const copy(source->duplicate(CreateType::Fresh));
    EXPECT_EQ(copy->referenceCount(), 1U);
    EXPECT_EQ(copy->getName(), L"Box");
    ASSERT_EQ(copy->getNumAttributes(), 3U);
    EXPECT_TRUE(copy->isEqualTo(*source));
    EXPECT_TRUE(copy->getAttribute(1)->hasFlag(Attribute::weakValueFlag));
    EXPECT_NE(dynamic_cast<CustAttr<int>*>(copy->getAttribute(1)), nullptr);
    EXPECT_EQ(copy->getAttribute(1)->getLocation(unknown), copy.get());
    static_cast<Attr<int>*>(copy->getAttribute(1))->assignFrom(6, nullptr, nullptr);
    EXPECT_EQ(static_cast<Attr<int>*>(source->getAttribute(1))->getValue(), 5);
    EXPECT_FALSE(copy->isEqualTo(*source));
}

TEST(AttrContainer, DuplicateWithoutASourceStartsAfresh)
{
    auto const source = initialisedContainer();
    source->setName(L"Box", 0);
    add(*source, L"A", 5);
    SmartPtr<AttrContainer> const copy(source->duplicate(CreateType::NoSource));
    EXPECT_EQ(copy->getName(), String::EMPTY);
    EXPECT_EQ(copy->getNumAttributes(), 1U);
}

TEST(AttrContainer, AClassThatCannotBeCreatedCannotBeDuplicated)
{
    class Abstract : public AttrContainer
    {
    public:
        Abstract() : AttrContainer(CreateType::Fresh, nullptr) {}
        [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override { return Attribute::Class(); }
    };
    SmartPtr<AttrContainer> const source(new Abstract);
    EXPECT_EQ(source->duplicate(CreateType::Fresh), nullptr);
    EXPECT_EQ(source->duplicateAll(CreateType::Fresh), nullptr);
}

TEST(AttrContainer, EqualContainersHaveTheSameClass)
{
    class Derived : public AttrContainer
    {
    public:
        Derived() : AttrContainer(CreateType::Fresh, nullptr) {}
        [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override { return Observer::Class(); }
    };
    SmartPtr<AttrContainer> const derived(new Derived);
    derived->init(CreateType::Fresh, nullptr);
    EXPECT_FALSE(initialisedContainer()->isEqualTo(*derived));
    EXPECT_FALSE(derived->isEqualTo(*initialisedContainer()));
}

TEST(AttrContainer, AStaticAttributeIsNotEqualToACustomOne)
{
    std::array<AttrDefinition, 2> const rows = {
        {{1, L"Count", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    auto const withStatic = initialisedContainer();
    withStatic->createAttributes(rows.data(), CreateType::Fresh, nullptr);
    auto const withCustom = initialisedContainer();
    add(*withCustom, L"Count", 0);
    EXPECT_FALSE(withStatic->isEqualTo(*withCustom));
    EXPECT_FALSE(withCustom->isEqualTo(*withStatic));
}

TEST(AttrContainer, EqualContainersHaveTheSameNamesTypesAndValuesInOrder)
{
    auto const a = initialisedContainer();
    auto const b = initialisedContainer();
    EXPECT_TRUE(a->isEqualTo(*b));
    EXPECT_FALSE(a->isEqualTo(*SmartPtr<AttrContainer>(new AttrContainer(CreateType::Fresh, nullptr))));
    add(*a, L"A", 1);
    EXPECT_FALSE(a->isEqualTo(*b));
    EXPECT_FALSE(b->isEqualTo(*a));
    add(*b, L"B", 1);
    EXPECT_FALSE(a->isEqualTo(*b));
    auto const c = initialisedContainer();
    add(*c, L"A", true);
    EXPECT_FALSE(a->isEqualTo(*c));
    auto const d = initialisedContainer();
    add(*d, L"A", 1);
    EXPECT_TRUE(a->isEqualTo(*d));
    d->setName(L"D", 0);
    EXPECT_FALSE(a->isEqualTo(*d));
}

TEST(AttrContainer, CopyFromTakesTheValuesOfCommonNames)
{
    auto const source = initialisedContainer();
    source->setName(L"Box", 0);
    add(*source, L"A", 5);
    add(*source, L"B", 6);
    auto const target = initialisedContainer();
    auto* const text = add(*target, L"A", String::EMPTY);
    EXPECT_TRUE(target->copyFrom(source.get()));
    EXPECT_EQ(target->getName(), L"Box");
    EXPECT_EQ(text->getValue(), L"5");
    EXPECT_EQ(target->getNumAttributes(), 2U);
    EXPECT_FALSE(target->copyFrom(nullptr));
    EXPECT_FALSE(target->copyFrom(text));
}

TEST(AttrContainer, DuplicateAllKeepsObserversAmongTheCopies)
{
    auto const source = initialisedContainer();
    auto* const observed = add(*source, L"Observed", 1);
    auto* const observing = add(*source, L"Observing", 1);
    SmartPtr<support::Watcher> const outside(new support::Watcher);
    observed->addObserver(observing);
    observed->addObserver(source.get(), Observer::Notice::ToChange);
    outside->watch(*observed);
    source->addObserver(observing);
    SmartPtr<AttrContainer> const copy(source->duplicateAll(CreateType::Fresh));
    auto const* const params = copy->getAttribute(1)->parEx();
    ASSERT_NE(params, nullptr);
    EXPECT_EQ(params->changed.size(), 1U);
    EXPECT_TRUE(params->changed.contains(copy->getAttribute(2)));
    EXPECT_EQ(params->toChange.size(), 1U);
    EXPECT_TRUE(params->toChange.contains(copy.get()));
    ASSERT_NE(copy->parEx(), nullptr);
    EXPECT_TRUE(copy->parEx()->changed.contains(copy->getAttribute(2)));
    EXPECT_EQ(Observer::srcToCopyTable(), nullptr);
    SmartPtr<AttrContainer> const plainCopy(source->duplicate(CreateType::Fresh));
    EXPECT_EQ(plainCopy->getAttribute(1)->parEx(), nullptr);
}

TEST(AttrContainer, DuplicateAllWithoutASourceTakesNoObservers)
{
    auto const source = initialisedContainer();
    source->getAttribute(0)->addObserver(source.get());
    SmartPtr<AttrContainer> const copy(source->duplicateAll(CreateType::NoSource));
    EXPECT_EQ(copy->getAttribute(0)->parEx(), nullptr);
    oV::PreserveObserverRelation const relations;
    SmartPtr<AttrContainer> const fresh(new AttrContainer(CreateType::NoSource, source.get()));
    fresh->init(CreateType::NoSource, source.get());
    fresh->updateObservers(*relations.table());
    EXPECT_EQ(fresh->getAttribute(0)->parEx(), nullptr);
}

// Visitors

TEST(AttrContainer, VisitorsVisitInOrder)
{
    auto const container = initialisedContainer();
    add(*container, L"A", 1);
    add(*container, L"B", 2);
    std::vector<Observer*> visited;
    container->attributeVisitor([&](Attribute& attribute) { visited.push_back(&attribute); });
    EXPECT_EQ(visited,
              (std::vector<Observer*>{
                  container->getAttribute(0), container->getAttribute(1), container->getAttribute(2)}));
    visited.clear();
    container->observerVisitor([&](Observer& observer) { visited.push_back(&observer); });
    EXPECT_EQ(visited.size(), 4U);
    EXPECT_EQ(visited.front(), container.get());
    std::vector<AttrContainer*> containers;
    container->fieldVisitor([&](AttrContainer& field) { containers.push_back(&field); });
    EXPECT_TRUE(containers.empty());
    container->fieldAndStructureVisitor([&](AttrContainer& field) { containers.push_back(&field); });
    EXPECT_EQ(containers, std::vector<AttrContainer*>{container.get()});
}

} // namespace
