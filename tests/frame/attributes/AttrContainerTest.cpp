#include "tests/frame/attributes/Watcher.h"
#include "tests/support/Attributes.h"
#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/InfoFailed.h>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <type_traits>
#include <vector>

namespace
{

using namespace support::attributes;
using oV::Observer;
SmartPtr<AttrContainer> made()
{
    return SmartPtr<AttrContainer>(new AttrContainer(CreateType::Fresh, nullptr));
}

std::array<AttrDefinition, 3> const listRows = {{{1, L"Names", AttrType::Strings, 18},
                                                 {2, L"Count", AttrType::Int, 18},
                                                 {3, String::NIL, AttrType::End, 1}}};

// Set-up

TEST(AttrContainer, DerivesFromObserverAndTheTwoInterfaces)
{
    EXPECT_TRUE((std::is_base_of_v<Observer, AttrContainer>));
    EXPECT_TRUE((std::is_base_of_v<Bv_1_1::VisitorCore, AttrContainer>));
    EXPECT_TRUE((std::is_base_of_v<oV::AccessibleInterface, AttrContainer>));
    EXPECT_TRUE((std::is_base_of_v<oV::ValidationInterface, AttrContainer>));
    EXPECT_EQ(std::wstring(AttrContainer::Class()->name()), L"AttrContainer");
    EXPECT_EQ(AttrContainer::Class()->parent(), Observer::Class());
    EXPECT_EQ(made()->getClassType(), AttrContainer::Class());
    SmartPtr<Bv_1_1::BaseNode> const fromRecord(AttrContainer::Class()->create());
    EXPECT_EQ(fromRecord->getClassType(), AttrContainer::Class());
}

TEST(AttrContainer, OrdersItsVirtualOperations)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    using C = AttrContainer;
    EXPECT_EQ(support::virtualSlot(&C::lookupObject), 17U);
    EXPECT_EQ(support::virtualSlot(&C::reservedQuery1), 18U);
    EXPECT_EQ(support::virtualSlot(&C::reservedQuery2), 19U);
    EXPECT_EQ(support::virtualSlot(&C::duplicate), 20U);
    EXPECT_EQ(support::virtualSlot(&C::duplicateAll), 21U);
    EXPECT_EQ(support::virtualSlot(&C::checkCreateChildField), 22U);
    EXPECT_EQ(support::virtualSlot(&C::checkCreateDefaultChildField), 23U);
    EXPECT_EQ(support::virtualSlot(&C::init), 24U);
    EXPECT_EQ(support::virtualSlot(&C::isEqualTo), 25U);
    EXPECT_EQ(support::virtualSlot(&C::fieldVisitor), 26U);
    EXPECT_EQ(support::virtualSlot(&C::fieldAndStructureVisitor), 27U);
    EXPECT_EQ(support::virtualSlot(&C::observerVisitor), 28U);
    EXPECT_EQ(support::virtualSlot(&C::attributeVisitor), 29U);
    EXPECT_EQ(support::virtualSlot(&C::toJson), 30U);
    EXPECT_EQ(support::virtualSlot(&C::prepareUpdateFromJson), 31U);
    EXPECT_EQ(support::virtualSlot(&C::updateAfterCreationFromJson), 32U);
    EXPECT_EQ(support::virtualSlot(&C::initRead), 33U);
    EXPECT_EQ(support::virtualSlot(&C::readField), 34U);
    EXPECT_EQ(support::virtualSlot(&C::writeField), 35U);
    EXPECT_EQ(support::virtualSlot(&C::lookupToken), 36U);
    EXPECT_EQ(support::virtualSlot(&C::lookupField), 37U);
    EXPECT_EQ(support::virtualSlot(&C::convertToNewFieldToken), 38U);
    EXPECT_EQ(support::virtualSlot(&C::getDisplayName), 39U);
    EXPECT_EQ(support::virtualSlot(&C::setDisplayName), 40U);
    EXPECT_EQ(support::virtualSlot(&C::isNameUnique), 41U);
    EXPECT_EQ(support::virtualSlot(&C::checkName), 42U);
    EXPECT_EQ(support::virtualSlot(&C::generateUniqueName), 43U);
    EXPECT_EQ(support::virtualSlot(&C::setName), 44U);
    EXPECT_EQ(support::virtualSlot(&C::getAttrToken), 45U);
    EXPECT_EQ(support::virtualSlot(&C::getAttrName), 46U);
    EXPECT_EQ(support::virtualSlot(&C::getAttrDefinition), 47U);
    EXPECT_EQ(support::virtualSlot(&C::getIOTokensList), 48U);
    EXPECT_EQ(support::virtualSlot(&C::getFieldToken), 49U);
    EXPECT_EQ(support::virtualSlot(&C::getFieldName), 50U);
    EXPECT_EQ(support::virtualSlot(&C::getFieldRegistryPrefix), 51U);
    EXPECT_EQ(support::virtualSlot(&C::reservedHook), 52U);
    EXPECT_EQ(support::virtualSlot(&C::reservedFlag), 53U);
    EXPECT_EQ(support::virtualSlot(&C::hasUuid), 54U); // 54 operations, one more slot for the destructor
    EXPECT_EQ(support::virtualSlot(&oV::AccessibleInterface::isAccessible), 0U);
    EXPECT_EQ(support::virtualSlot(&oV::AccessibleInterface::makeAccessible), 1U);
    EXPECT_EQ(support::virtualSlot(&oV::ValidationInterface::isValid), 0U);
    EXPECT_EQ(support::virtualSlot(&oV::ValidationInterface::makeValid), 1U);
}

TEST(AttrContainer, UnusedHooksReturnNeutralValues)
{
    auto const container = initialisedContainer();
    container->setName(L"Box", 0);
    EXPECT_EQ(container->reservedQuery1(), 0U);
    EXPECT_EQ(container->reservedQuery2(), 0U);
    EXPECT_EQ(container->lookupObject(), nullptr);
    EXPECT_EQ(container->checkCreateChildField(L"a"), nullptr);
    EXPECT_EQ(container->checkCreateDefaultChildField(L"a"), nullptr);
    EXPECT_TRUE(container->toJson().isNil());
    EXPECT_FALSE(container->prepareUpdateFromJson(L"{}"));
    EXPECT_FALSE(container->updateAfterCreationFromJson(L"{}"));
    EXPECT_EQ(container->lookupField(L"a"), nullptr);
    EXPECT_EQ(container->convertToNewFieldToken(7), 7U);
    EXPECT_EQ(container->getDisplayName(), L"Box");
    EXPECT_TRUE(container->setDisplayName(L"Crate"));
    EXPECT_EQ(container->getName(), L"Crate");
    EXPECT_TRUE(container->isNameUnique(L"Crate"));
    EXPECT_TRUE(container->checkName(L""));
    EXPECT_EQ(container->generateUniqueName(L"New"), L"New");
    EXPECT_TRUE(container->getFieldRegistryPrefix().isNil());
    container->reservedHook();
    EXPECT_FALSE(container->reservedFlag());
    EXPECT_FALSE(container->hasUuid());
    EXPECT_TRUE(container->isAccessible());
    EXPECT_TRUE(container->makeAccessible());
    EXPECT_TRUE(container->isValid());
    EXPECT_TRUE(container->makeValid());
}

TEST(AttrContainer, HasNoAttributesBeforeInit)
{
    auto const container = made();
    EXPECT_EQ(container->getNumAttributes(), 0U);
    EXPECT_EQ(container->getAttribute(0), nullptr);
    EXPECT_EQ(container->getAttribute(1), nullptr);
    EXPECT_TRUE(container->getName().isNil());
    EXPECT_FALSE(container->setName(L"Box", 0));
    auto* const custom = add(*container, L"A", String(L"text")); // has the token 0
    EXPECT_TRUE(container->getName().isNil());
    EXPECT_FALSE(container->setName(L"Box", 0));
    EXPECT_EQ(custom->getValue(), L"text");
}

TEST(AttrContainer, InitMakesTheNameOnce)
{
    auto const container = made();
    EXPECT_TRUE(container->init(CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getNumAttributes(), 1U);
    EXPECT_EQ(container->getNumStaticAttributes(), 1U);
    EXPECT_EQ(container->getName(), String::EMPTY);
    EXPECT_TRUE(container->setName(L"Box", 0));
    EXPECT_EQ(container->getName(), L"Box");
    EXPECT_EQ(static_cast<Attr<String>*>(container->getAttribute(0))->getValue(), L"Box");
    EXPECT_FALSE(container->init(CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getName(), L"Box");
}

TEST(AttrContainer, AnObserverMayVetoANewName)
{
    auto const container = initialisedContainer();
    SmartPtr<support::Watcher> const watcher(new support::Watcher);
    watcher->watch(*container->getAttribute(0));
    watcher->whenToChange = [](Observer& subject) {
        subject.addNotifyInfo(SmartPtr<oV::InfoFailed>(new oV::InfoFailed).get());
    };
    EXPECT_FALSE(container->setName(L"Box", 0));
    EXPECT_EQ(container->getName(), String::EMPTY);
}

// Static attributes

TEST(AttrContainer, CreateAttributesMakesTheRowsUpToTheNullName)
{
    auto const container = initialisedContainer();
    EXPECT_TRUE(container->createAttributes(listRows.data(), CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getNumAttributes(), 3U);
    EXPECT_EQ(container->getAttribute(1)->getClassType(), Attr<StringList>::Class());
    EXPECT_EQ(container->getAttribute(2)->getClassType(), Attr<int>::Class());
    EXPECT_EQ(container->getAttribute(3), nullptr);
    EXPECT_EQ(container->getAttribute(1)->getName(), L"Names");
    EXPECT_EQ(container->getAttribute(1)->getLocation(unknown), container.get());
    for (unsigned int token = 0; token < 3; ++token) {
        EXPECT_TRUE(container->getAttribute(token)->isInBlock());
        EXPECT_EQ(container->getAttribute(token)->referenceCount(), 1U);
    }
}

TEST(AttrContainer, CreateAttributesRefusesWhatItCannotMakeAndMakesNothing)
{
    auto const container = initialisedContainer();
    std::array<AttrDefinition, 3> const taken = {
        {{1, L"A", AttrType::Int, 0}, {0, L"B", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    std::array<AttrDefinition, 3> const repeated = {
        {{1, L"A", AttrType::Int, 0}, {1, L"B", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    std::array<AttrDefinition, 3> const unknownType = {
        {{1, L"A", AttrType::Int, 0}, {2, L"B", AttrType{20}, 0}, {0, String::NIL, AttrType::End, 1}}};
    std::array<AttrDefinition, 2> const tooFar = {
        {{65536, L"A", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    std::array<AttrDefinition, 1> const none = {{{0, String::NIL, AttrType::End, 1}}};
    EXPECT_FALSE(container->createAttributes(nullptr, CreateType::Fresh, nullptr));
    EXPECT_FALSE(container->createAttributes(taken.data(), CreateType::Fresh, nullptr));
    EXPECT_FALSE(container->createAttributes(repeated.data(), CreateType::Fresh, nullptr));
    EXPECT_FALSE(container->createAttributes(unknownType.data(), CreateType::Fresh, nullptr));
    EXPECT_FALSE(container->createAttributes(tooFar.data(), CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getNumAttributes(), 1U);
    EXPECT_TRUE(container->createAttributes(none.data(), CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getNumAttributes(), 1U);
}

TEST(AttrContainer, TokensMayLeavePlacesFree)
{
    auto const container = initialisedContainer();
    std::array<AttrDefinition, 2> const rows = {
        {{3, L"A", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    EXPECT_TRUE(container->createAttributes(rows.data(), CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getNumAttributes(), 4U);
    EXPECT_EQ(container->getAttribute(1), nullptr);
    EXPECT_NE(container->getAttribute(3), nullptr);
    EXPECT_TRUE(container->getAttrName(2).isNil());
    EXPECT_EQ(container->getAttrDefinition(2), nullptr);
    std::array<AttrDefinition, 2> const later = {
        {{2, L"B", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    EXPECT_TRUE(container->createAttributes(later.data(), CreateType::Fresh, nullptr));
    EXPECT_NE(container->getAttribute(2), nullptr);
    auto const equal = initialisedContainer();
    EXPECT_TRUE(equal->createAttributes(rows.data(), CreateType::Fresh, nullptr));
    EXPECT_FALSE(equal->isEqualTo(*container));
}

TEST(AttrContainer, StaticAttributesAreCopiedFromTheSource)
{
    auto const source = initialisedContainer();
    source->createAttributes(listRows.data(), CreateType::Fresh, nullptr);
    static_cast<Attr<int>*>(source->getAttribute(2))->assignFrom(7, nullptr, nullptr);
    auto const copy = initialisedContainer();
    EXPECT_TRUE(copy->createAttributes(listRows.data(), CreateType::Fresh, source.get()));
    EXPECT_EQ(static_cast<Attr<int>*>(copy->getAttribute(2))->getValue(), 7);
    auto const fresh = initialisedContainer();
    EXPECT_TRUE(fresh->createAttributes(listRows.data(), CreateType::NoSource, source.get()));
    EXPECT_EQ(static_cast<Attr<int>*>(fresh->getAttribute(2))->getValue(), 0);
    auto const without = initialisedContainer(); // a source without such attributes
    auto const partial = initialisedContainer();
    EXPECT_TRUE(partial->createAttributes(listRows.data(), CreateType::Fresh, without.get()));
    EXPECT_EQ(static_cast<Attr<int>*>(partial->getAttribute(2))->getValue(), 0);
}

TEST(AttrContainer, OnlyStaticAttributesOfTheSourceAreCopiedToStaticOnes)
{
    auto const source = initialisedContainer();
    add(*source, L"Names", String(L"[\"a\"]")); // token 1, as in the table
    auto const copy = initialisedContainer();
    EXPECT_TRUE(copy->createAttributes(listRows.data(), CreateType::Fresh, source.get()));
    EXPECT_TRUE(valueOf<StringList>(*copy, L"Names").empty());
}

TEST(AttrContainer, TheLargestTokenIs65535)
{
    auto const container = initialisedContainer();
    std::array<AttrDefinition, 2> const largest = {
        {{65535, L"A", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    EXPECT_TRUE(container->createAttributes(largest.data(), CreateType::Fresh, nullptr));
    EXPECT_EQ(container->getAttrToken(L"A"), 65535U);
    EXPECT_EQ(container->getNumAttributes(), 65536U);
}

TEST(AttrContainer, FreePlacesAreSkipped)
{
    std::array<AttrDefinition, 2> const rows = {
        {{2, L"A", AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    auto const container = made(); // has no name
    EXPECT_TRUE(container->createAttributes(rows.data(), CreateType::Fresh, nullptr));
    EXPECT_TRUE(container->getName().isNil());
    EXPECT_FALSE(container->setName(L"Box", 0));
    EXPECT_EQ(container->getAttrToken(L"A"), 2U);
    EXPECT_EQ(container->getAttrToken(L"B"), unknown);
    EXPECT_EQ(container->getFieldToken(L"A"), 2U);
    EXPECT_EQ(container->getFieldToken(L"B"), unknown);
    EXPECT_TRUE(container->getFieldName(1).isNil());
    int visited = 0;
    container->attributeVisitor([&](Attribute&) { ++visited; });
    EXPECT_EQ(visited, 1);
    static_cast<Attr<int>*>(container->getAttribute(2))->assignFrom(7, nullptr, nullptr);
    auto const target = initialisedContainer();
    add(*target, L"A", 0);
    EXPECT_TRUE(target->copyFrom(container.get()));
    EXPECT_EQ(valueOf<int>(*target, L"A"), 7);
}

// Custom attributes

TEST(AttrContainer, AddAttributeTakesTheAttributeOver)
{
    auto const container = initialisedContainer();
    auto* const attribute = new CustAttr<int>(CreateType::Fresh, nullptr);
    EXPECT_TRUE(container->addAttribute(attribute, L"Size"));
    EXPECT_EQ(attribute->referenceCount(), 1U);
    EXPECT_EQ(attribute->getName(), L"Size");
    EXPECT_EQ(attribute->getLocation(unknown), container.get());
    EXPECT_EQ(container->getNumAttributes(), 2U);
    EXPECT_EQ(container->getAttribute(1), attribute);
    EXPECT_EQ(container->getAttrToken(L"Size"), 1U);
    EXPECT_EQ(container->getAttrName(1), L"Size");
    EXPECT_EQ(container->getAttrDefinition(1), nullptr);
    EXPECT_EQ(container->inqObserver(L"Size"), attribute);
    EXPECT_EQ(container->inqObserver(L"size"), nullptr);
}

TEST(AttrContainer, AddAttributeRefusesNullAndWhatAContainerHas)
{
    auto const container = initialisedContainer();
    auto const other = initialisedContainer();
    EXPECT_FALSE(container->addAttribute(nullptr, L"A"));
    Attribute* const attribute = add(*container, L"A", 1);
    EXPECT_FALSE(container->addAttribute(attribute, L"B"));
    EXPECT_FALSE(other->addAttribute(attribute, L"B"));
    EXPECT_FALSE(other->addAttribute(container->getAttribute(0), L"B"));
    EXPECT_EQ(attribute->getName(), L"A");
    EXPECT_EQ(attribute->getLocation(unknown), container.get());
    EXPECT_EQ(container->getNumAttributes(), 2U);
    EXPECT_EQ(other->getNumAttributes(), 1U);
}

TEST(AttrContainer, ASecondAttributeOfTheSameNameAndTypeIsRefusedAndDestroyed)
{
    auto const container = initialisedContainer();
    Attribute* const first = add(*container, L"X", 1);
    EXPECT_FALSE(container->addAttribute(new oV::CustAttr<int>(CreateType::Fresh, nullptr), L"X"));
    Bv_1_1::SmartPtr<Attribute> const held(new oV::CustAttr<int>(CreateType::Fresh, nullptr));
    EXPECT_FALSE(container->addAttribute(held.get(), L"X"));
    EXPECT_EQ(held->referenceCount(), 1U);
    EXPECT_TRUE(held->getName().isNil());
    EXPECT_EQ(container->getNumAttributes(), 2U);
    EXPECT_EQ(container->getAttribute(container->getAttrToken(L"X")), first);
}

TEST(AttrContainer, ASecondAttributeOfTheSameNameAndAnotherTypeIsFoundSecond)
{
    auto const container = initialisedContainer();
    Attribute* const first = add(*container, L"X", 1);
    Attribute* const second = add(*container, L"X", true);
    EXPECT_EQ(container->getNumAttributes(), 3U);
    EXPECT_EQ(container->getAttribute(container->getAttrToken(L"X")), first);
    EXPECT_EQ(container->getAttribute(2), second);
    EXPECT_EQ(container->getAttrName(2), L"X");
}

TEST(AttrContainer, EachOfManyAttributesOfTheSameNameIsKnownByItsType)
{
    auto const container = initialisedContainer();
    add(*container, L"X", 1);
    add(*container, L"X", true);
    add(*container, L"X", 0.5);
    add(*container, L"X", String(L"text"));
    EXPECT_FALSE(container->addAttribute(new CustAttr<int>(CreateType::Fresh, nullptr), L"X"));
    EXPECT_FALSE(container->addAttribute(new CustAttr<bool>(CreateType::Fresh, nullptr), L"X"));
    EXPECT_FALSE(container->addAttribute(new CustAttr<double>(CreateType::Fresh, nullptr), L"X"));
    EXPECT_FALSE(container->addAttribute(new CustAttr<String>(CreateType::Fresh, nullptr), L"X"));
    EXPECT_EQ(container->getNumAttributes(), 5U);
}

TEST(AttrContainer, NamesMayHaveAnyText)
{
    auto const container = initialisedContainer();
    std::vector<String> const names = {
        L"a.b.c", L"", L" ", L"\"quoted\"", L"}", L"two\nlines", L"\U0001F600", L"Name"};
    for (String const& name : names) {
        add(*container, name, 1);
    }
    for (unsigned int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(container->getAttrToken(names[i]), 1 + i);
        EXPECT_EQ(container->getAttrName(1 + i), names[i]);
    }
}

TEST(AttrContainer, ANullNameCountsAsTheEmptyName)
{
    auto const container = initialisedContainer();
    EXPECT_EQ(container->getAttrToken(String::NIL), unknown);
    add(*container, String::NIL, 1);
    EXPECT_EQ(container->getAttrToken(String::NIL), 1U);
    EXPECT_EQ(container->getAttrToken(String::EMPTY), 1U);
    EXPECT_EQ(container->getAttrName(1), String::EMPTY);
    std::array<AttrDefinition, 2> const rows = {
        {{1, String::EMPTY, AttrType::Int, 0}, {0, String::NIL, AttrType::End, 1}}};
    auto const withStatic = initialisedContainer();
    EXPECT_TRUE(withStatic->createAttributes(rows.data(), CreateType::Fresh, nullptr));
    EXPECT_EQ(withStatic->getAttrToken(String::NIL), 1U);
}

TEST(AttrContainer, TheContainersOwnNameIsNotFoundByAName)
{
    auto const container = initialisedContainer();
    EXPECT_EQ(container->getAttrToken(L"Name"), unknown);
    EXPECT_EQ(container->getAttrName(0), L"Name");
    EXPECT_EQ(container->getFieldToken(L"Name"), 0U);
    EXPECT_EQ(container->getFieldName(0), L"Name");
    add(*container, L"Name", 1);
    EXPECT_EQ(container->getAttrToken(L"Name"), 1U);
}

TEST(AttrContainer, StaticAttributesAreFoundFirst)
{
    auto const container = initialisedContainer();
    add(*container, L"Count", true);
    add(*container, L"Other", 5);
    container->createAttributes(listRows.data(), CreateType::Fresh, nullptr);
    EXPECT_EQ(container->getAttrToken(L"Count"), 2U);
    EXPECT_EQ(container->getAttrToken(L"Names"), 1U);
    EXPECT_EQ(container->getAttrDefinition(2), &listRows[1]);
    EXPECT_EQ(container->getAttrDefinition(unknown), nullptr);
    EXPECT_EQ(container->lookupToken(L"Count"), 2U);
    EXPECT_EQ(container->lookupToken(L"Other"), unknown);
    EXPECT_TRUE(container->getFieldName(3).isNil());
    // The table of custom attributes begins where the block ends.
    EXPECT_EQ(container->getAttrName(3), L"Count");
    EXPECT_EQ(container->getAttrToken(L"Other"), 4U);
}

TEST(AttrContainer, ATokenBeyondTheTableGivesNothing)
{
    auto const container = initialisedContainer();
    add(*container, L"A", 1);
    EXPECT_EQ(container->getAttribute(2), nullptr);
    EXPECT_EQ(container->getAttribute(unknown), nullptr);
    EXPECT_TRUE(container->getAttrName(unknown).isNil());
}

TEST(AttrContainer, RmAllCustomAttributesLeavesTheStaticOnes)
{
    auto const container = initialisedContainer();
    SmartPtr<Attribute> const kept(add(*container, L"A", 1));
    add(*container, L"B", 2);
    EXPECT_TRUE(container->rmAllCustomAttributes());
    EXPECT_EQ(container->getNumAttributes(), 1U);
    EXPECT_EQ(container->getAttrToken(L"A"), unknown);
    EXPECT_EQ(kept->referenceCount(), 1U);
    EXPECT_EQ(kept->getLocation(unknown), nullptr);
    EXPECT_TRUE(container->rmAllCustomAttributes());
    EXPECT_TRUE(container->addAttribute(kept.get(), L"C"));
    EXPECT_EQ(container->getAttrToken(L"C"), 1U);
}

TEST(AttrContainer, ARemovedAttributeKeepsALocationThatWasSetLater)
{
    auto const container = initialisedContainer();
    auto const other = initialisedContainer();
    SmartPtr<Attribute> const attribute(add(*container, L"A", 1));
    attribute->setLocation(other.get());
    container->rmAllCustomAttributes();
    EXPECT_EQ(attribute->getLocation(unknown), other.get());
}

TEST(AttrContainer, AnObserverMayUseTheContainerWhileItsAttributesGo)
{
    class Reader : public Observer
    {
    public:
        explicit Reader(AttrContainer& container) : container_(container) {}
        void informDelete(Observer*) noexcept override
        {
            numbers.push_back(container_.getNumAttributes());
            add(container_, numbers.size() == 1 ? L"New" : L"Newer", 1);
        }
        std::vector<unsigned int> numbers;

    private:
        AttrContainer& container_;
    };
    auto const container = initialisedContainer();
    SmartPtr<Reader> const reader(new Reader(*container));
    add(*container, L"A", 1)->addObserver(reader.get());
    add(*container, L"B", 1)->addObserver(reader.get());
    container->rmAllCustomAttributes();
    EXPECT_EQ(reader->numbers, (std::vector<unsigned int>{1, 2}));
    EXPECT_EQ(container->getNumAttributes(), 3U);
}

TEST(AttrContainer, AnObserverMayRemoveAllAttributesWhileOneChanges)
{
    auto const container = initialisedContainer();
    auto* const attribute = add(*container, L"A", 1);
    SmartPtr<support::Watcher> const watcher(new support::Watcher);
    watcher->watch(*attribute);
    watcher->whenToChange = [&](Observer&) { container->rmAllCustomAttributes(); };
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(container->getNumAttributes(), 1U);
    EXPECT_EQ(watcher->calls, (std::vector<std::string>{"toChange", "changed"}));
}

TEST(AttrContainer, AnObserverMayUseTheContainerWhileItIsDestroyed)
{
    class Reader : public Observer
    {
    public:
        explicit Reader(Attribute& attribute) : attribute_(attribute) {}
        void informDelete(Observer* subject) noexcept override
        {
            isComplete = attribute_.getLocation(unknown) == subject;
        }
        bool isComplete = false;

    private:
        Attribute& attribute_;
    };
    auto container = initialisedContainer();
    SmartPtr<Attribute> const attribute(add(*container, L"A", 1));
    SmartPtr<Reader> const reader(new Reader(*attribute));
    container->addObserver(reader.get());
    container.reset();
    EXPECT_TRUE(reader->isComplete);
    EXPECT_EQ(attribute->getLocation(unknown), nullptr);
}

TEST(AttrContainer, OwnsNothingInACycle)
{
    auto container = initialisedContainer();
    SmartPtr<support::Watcher> const watcher(new support::Watcher);
    SmartPtr<Attribute> const attribute(add(*container, L"A", 1));
    watcher->watch(*attribute);
    EXPECT_EQ(container->referenceCount(), 1U);
    container.reset();
    EXPECT_EQ(attribute->referenceCount(), 1U);
    EXPECT_EQ(watcher->referenceCount(), 1U);
}

} // namespace
