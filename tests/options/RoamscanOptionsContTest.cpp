#include "tests/support/Attributes.h"
#include "tests/support/LiveOptions.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/PreserveObserverRelation.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace support::attributes;
using oV::Roamscan::RoamscanOptionsCont;
using support::madeOptionsContainer;
using Strings = std::vector<String>;

/// Makes the protected tables visible.
class OpenContainer : public RoamscanOptionsCont
{
public:
    OpenContainer() : RoamscanOptionsCont(CreateType::Fresh, nullptr) {}

    using RoamscanOptionsCont::attrDefMap;
    using RoamscanOptionsCont::attrDefs;
    using RoamscanOptionsCont::attrNames;
};

SmartPtr<RoamscanOptionsCont> uninitialised()
{
    return SmartPtr<RoamscanOptionsCont>(new RoamscanOptionsCont(CreateType::Fresh, nullptr));
}

} // namespace

TEST(RoamscanOptionsCont, HasItsClassRecord)
{
    Bv_1_1::oVClass const* const record = RoamscanOptionsCont::Class();
    EXPECT_EQ(std::wstring(record->name()), L"RoamscanOptionsCont");
    EXPECT_EQ(record->parent(), AttrContainer::Class());
    EXPECT_EQ(record->version().number, 0U);
    EXPECT_EQ(uninitialised()->getClassType(), record);
}

TEST(RoamscanOptionsCont, TheClassRecordMakesAContainerWithoutInit)
{
    SmartPtr<Bv_1_1::BaseNode> const made(RoamscanOptionsCont::Class()->create());
    ASSERT_TRUE(made);
    EXPECT_EQ(made->getClassType(), RoamscanOptionsCont::Class());
    EXPECT_EQ(static_cast<RoamscanOptionsCont*>(made.get())->getNumAttributes(), 0U);
}

TEST(RoamscanOptionsCont, TheDefinitionTableHasItsThreeRows)
{
    auto const& rows = OpenContainer::attrDefs;
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].token, 1U);
    EXPECT_EQ(rows[0].name, String(L"OptionsNames"));
    EXPECT_EQ(static_cast<unsigned int>(rows[0].type), 21U);
    EXPECT_EQ(rows[0].flags, 18U);
    EXPECT_EQ(rows[1].token, 2U);
    EXPECT_EQ(rows[1].name, String(L"OptionsTypes"));
    EXPECT_EQ(static_cast<unsigned int>(rows[1].type), 21U);
    EXPECT_EQ(rows[1].flags, 18U);
    EXPECT_EQ(rows[2].token, 3U);
    EXPECT_TRUE(rows[2].name.isNil());
    EXPECT_EQ(static_cast<unsigned int>(rows[2].type), 54U);
    EXPECT_EQ(rows[2].flags, 1U);
}

TEST(RoamscanOptionsCont, InitStaticsMakesBothTables)
{
    RoamscanOptionsCont::clearStatics();
    EXPECT_EQ(OpenContainer::attrNames, nullptr);
    EXPECT_EQ(OpenContainer::attrDefMap, nullptr);
    RoamscanOptionsCont::clearStatics(); // either may be absent already
    RoamscanOptionsCont::initStatics();
    ASSERT_NE(OpenContainer::attrNames, nullptr);
    EXPECT_EQ(OpenContainer::attrNames->keyToToken(L"OptionsNames"), 1U);
    EXPECT_EQ(OpenContainer::attrNames->keyToToken(L"OptionsTypes"), 2U);
    EXPECT_TRUE(OpenContainer::attrNames->tokenToKey(3).isNil());
    ASSERT_NE(OpenContainer::attrDefMap, nullptr);
    ASSERT_EQ(OpenContainer::attrDefMap->size(), 2U);
    EXPECT_EQ(OpenContainer::attrDefMap->at(1), &OpenContainer::attrDefs[0]);
    EXPECT_EQ(OpenContainer::attrDefMap->at(2), &OpenContainer::attrDefs[1]);
}

TEST(RoamscanOptionsCont, ASecondInitStaticsLeavesTheTablesAsTheyWere)
{
    RoamscanOptionsCont::initStatics();
    auto* const names = OpenContainer::attrNames;
    auto* const definitions = OpenContainer::attrDefMap;
    RoamscanOptionsCont::initStatics();
    EXPECT_EQ(OpenContainer::attrNames, names);
    EXPECT_EQ(OpenContainer::attrDefMap, definitions);
}

TEST(RoamscanOptionsCont, LoadingTheLibraryHasSetUpTheStatics)
{
    // Runs in a process of its own under ctest; in a shared process the tests above leave them set up as
    // well.
    EXPECT_NE(OpenContainer::attrNames, nullptr);
    EXPECT_NE(OpenContainer::attrDefMap, nullptr);
}

TEST(RoamscanOptionsCont, IsMadeWithoutAttributes)
{
    auto const container = uninitialised();
    EXPECT_EQ(container->getNumAttributes(), 0U);
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_TRUE(container->OptionsTypes().empty());
}

TEST(RoamscanOptionsCont, BeforeInitTheListsCannotBeSet)
{
    auto const container = uninitialised();
    container->OptionsNames(Strings{L"a"});
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_EQ(container->getNumAttributes(), 0U);
}

TEST(RoamscanOptionsCont, BeforeInitAnOptionInAListsPlaceIsNoList)
{
    auto const container = uninitialised();
    add<int>(*container, L"a", 1);
    add<int>(*container, L"b", 2);
    add<int>(*container, L"c", 3);
    container->OptionsNames(Strings{L"x"});
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_EQ(valueOf<int>(*container, L"b"), 2);
}

TEST(RoamscanOptionsCont, InitMakesTheTwoListsEmptyAndSetsTheName)
{
    auto const container = madeOptionsContainer();
    EXPECT_EQ(container->getName(), String(L"RoamscanOptionsCont"));
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_TRUE(container->OptionsTypes().empty());
    ASSERT_NE(container->getAttribute(1), nullptr);
    ASSERT_NE(container->getAttribute(2), nullptr);
    EXPECT_EQ(container->getAttribute(1)->getClassType(), Attr<Strings>::Class());
}

TEST(RoamscanOptionsCont, InitSaysWhetherItHasMadeTheAttributes)
{
    auto const container = uninitialised();
    EXPECT_TRUE(container->init(CreateType::Fresh, nullptr));
    container->setName(L"mine", 0);
    container->OptionsNames(Strings{L"a"});
    container->OptionsTypes(Strings{L"b"});
    EXPECT_FALSE(container->init(CreateType::Fresh, nullptr)); // they are there; the values start anew
    EXPECT_EQ(container->getNumAttributes(), 3U);
    EXPECT_EQ(container->getName(), String(L"RoamscanOptionsCont"));
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_TRUE(container->OptionsTypes().empty());
}

TEST(RoamscanOptionsCont, InitWithTheTypeNoSourceTakesNothingFromTheSource)
{
    auto const source = madeOptionsContainer();
    add<int>(*source, L"speed", 7);
    source->updateToCurrentOptions();
    auto const container = uninitialised();
    container->init(CreateType::NoSource, source.get());
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_TRUE(container->OptionsTypes().empty());
    EXPECT_EQ(container->getNumAttributes(), 3U);
}

TEST(RoamscanOptionsCont, InitOfADerivedClassSetsTheNameOfThisClass)
{
    class Derived : public RoamscanOptionsCont
    {
    public:
        Derived() : RoamscanOptionsCont(CreateType::Fresh, nullptr) {}
        [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override { return AttrContainer::Class(); }
    };
    SmartPtr<Derived> const container(new Derived());
    container->init(CreateType::Fresh, nullptr);
    EXPECT_EQ(container->getName(), String(L"RoamscanOptionsCont"));
}

TEST(RoamscanOptionsCont, TheListsAreWhatWasAssigned)
{
    auto const container = madeOptionsContainer();
    container->OptionsNames(Strings{L"a", L"b"});
    container->OptionsTypes(Strings{L"c"});
    EXPECT_EQ(container->OptionsNames(), (Strings{L"a", L"b"}));
    EXPECT_EQ(container->OptionsTypes(), Strings{L"c"});
}

TEST(RoamscanOptionsCont, FindsItsStaticAttributesByNameAndToken)
{
    auto const container = madeOptionsContainer();
    EXPECT_EQ(container->getAttrToken(L"OptionsNames"), 1U);
    EXPECT_EQ(container->getAttrToken(L"OptionsTypes"), 2U);
    EXPECT_EQ(container->getAttrName(1), String(L"OptionsNames"));
    EXPECT_EQ(container->getAttrName(2), String(L"OptionsTypes"));
    EXPECT_EQ(container->getAttrDefinition(1), &OpenContainer::attrDefs[0]);
    EXPECT_EQ(container->getAttrDefinition(2), &OpenContainer::attrDefs[1]);
}

TEST(RoamscanOptionsCont, KnowsItsStaticAttributesBeforeInit)
{
    auto const container = uninitialised();
    EXPECT_EQ(container->getAttrToken(L"OptionsTypes"), 2U);
    EXPECT_EQ(container->getAttrName(2), String(L"OptionsTypes"));
    EXPECT_EQ(container->getAttrDefinition(2), &OpenContainer::attrDefs[1]);
    EXPECT_EQ(container->getAttrDefinition(3), nullptr);
}

TEST(RoamscanOptionsCont, LooksOtherNamesAndTokensUpAsAContainerDoes)
{
    auto const container = madeOptionsContainer();
    add<int>(*container, L"speed", 7);
    unsigned int const token = container->getAttrToken(L"speed");
    EXPECT_EQ(token, container->getNumStaticAttributes());
    EXPECT_EQ(container->getAttrName(token), String(L"speed"));
    EXPECT_EQ(container->getAttrDefinition(token), nullptr);
    EXPECT_EQ(container->getAttrToken(L"nothing"), AttrContainer::unknownToken);
    EXPECT_TRUE(container->getAttrName(99).isNil());
    EXPECT_EQ(container->getAttribute(token + 1), nullptr);
}

TEST(RoamscanOptionsCont, WithoutStaticsItStillFindsOptions)
{
    auto const container = madeOptionsContainer();
    add<int>(*container, L"speed", 7);
    RoamscanOptionsCont::clearStatics();
    EXPECT_EQ(valueOf<int>(*container, L"speed"), 7);
    EXPECT_EQ(container->getAttrName(container->getAttrToken(L"speed")), String(L"speed"));
    EXPECT_EQ(container->getAttrDefinition(container->getAttrToken(L"speed")), nullptr);
    RoamscanOptionsCont::initStatics();
}

TEST(RoamscanOptionsCont, AnswersTheReservedQueries)
{
    auto const container = madeOptionsContainer();
    EXPECT_EQ(container->reservedQuery1(), 2U);
    EXPECT_EQ(container->reservedQuery2(), 0xFFFFFFFFU);
    EXPECT_FALSE(container->reservedFlag());
    container->reservedHook();
    EXPECT_EQ(container->lookupObject(), container.get());
}

TEST(RoamscanOptionsCont, CheckCreateFieldMakesAContainerWithoutInitForTheNameOfTheClass)
{
    SmartPtr<AttrContainer> const made(RoamscanOptionsCont::checkCreateField(L"RoamscanOptionsCont"));
    ASSERT_TRUE(made);
    EXPECT_EQ(made->getClassType(), RoamscanOptionsCont::Class());
    EXPECT_EQ(made->getNumAttributes(), 0U);
}

TEST(RoamscanOptionsCont, CheckCreateFieldMakesNothingForASimilarName)
{
    for (String const& name : {String(L"RoamscanOptionsCon"),
                               String(L"RoamscanOptionsCont "),
                               String(L"roamscanoptionscont"),
                               String::EMPTY,
                               String::NIL})
    {
        EXPECT_EQ(RoamscanOptionsCont::checkCreateField(name), nullptr);
    }
}

TEST(RoamscanOptionsCont, UpdateToCurrentOptionsListsNamesAndTypesInOrder)
{
    auto const container = madeOptionsContainer();
    add<int>(*container, L"speed", 7);
    add<bool>(*container, L"fast", true);
    add<double>(*container, L"", 0.5);
    add<String>(*container, L"a.b", L"text");
    container->updateToCurrentOptions();
    EXPECT_EQ(container->OptionsNames(), (Strings{L"speed", L"fast", String::EMPTY, L"a.b"}));
    EXPECT_EQ(container->OptionsTypes(),
              (Strings{Attr<int>::Class()->name(),
                       Attr<bool>::Class()->name(),
                       Attr<double>::Class()->name(),
                       Attr<String>::Class()->name()}));
}

TEST(RoamscanOptionsCont, UpdateToCurrentOptionsWithoutOptionsEmptiesBothLists)
{
    auto const container = madeOptionsContainer();
    container->OptionsNames(Strings{L"a"});
    container->OptionsTypes(Strings{L"b"});
    container->updateToCurrentOptions();
    EXPECT_TRUE(container->OptionsNames().empty());
    EXPECT_TRUE(container->OptionsTypes().empty());
}

TEST(RoamscanOptionsCont, InitializeCustomAttributesMakesWhatTheListsName)
{
    auto const container = madeOptionsContainer();
    container->OptionsNames(Strings{L"speed", L"fast", L"size", L"label"});
    container->OptionsTypes(Strings{Attr<int>::Class()->name(),
                                    Attr<bool>::Class()->name(),
                                    Attr<double>::Class()->name(),
                                    Attr<String>::Class()->name()});
    container->initializeCustomAttributes();
    EXPECT_EQ(container->getNumAttributes(), container->getNumStaticAttributes() + 4);
    EXPECT_EQ(valueOf<int>(*container, L"speed"), 0);
    EXPECT_FALSE(valueOf<bool>(*container, L"fast"));
    EXPECT_EQ(valueOf<double>(*container, L"size"), 0.0);
    EXPECT_EQ(valueOf<String>(*container, L"label"), String::EMPTY);
    EXPECT_NE(dynamic_cast<CustAttr<int>*>(container->getAttribute(container->getAttrToken(L"speed"))),
              nullptr);
    // Custom attributes store their container.
    EXPECT_EQ(container->getAttribute(container->getAttrToken(L"speed"))->getLocation(0xFFFFFFFF),
              container.get());
}

TEST(RoamscanOptionsCont, InitializeCustomAttributesIsTheWayBackFromUpdateToCurrentOptions)
{
    auto const first = madeOptionsContainer();
    add<int>(*first, L"speed", 7);
    add<String>(*first, L"label", L"text");
    first->updateToCurrentOptions();
    auto const second = madeOptionsContainer();
    second->OptionsNames(first->OptionsNames());
    second->OptionsTypes(first->OptionsTypes());
    second->initializeCustomAttributes();
    second->updateToCurrentOptions();
    EXPECT_EQ(second->OptionsNames(), first->OptionsNames());
    EXPECT_EQ(second->OptionsTypes(), first->OptionsTypes());
}

TEST(RoamscanOptionsCont, InitializeCustomAttributesSkipsUnknownTypes)
{
    auto const container = madeOptionsContainer();
    container->OptionsNames(Strings{L"a", L"b"});
    container->OptionsTypes(Strings{L"NoSuchType", Attr<int>::Class()->name()});
    container->initializeCustomAttributes();
    EXPECT_EQ(container->getNumAttributes(), container->getNumStaticAttributes() + 1);
    EXPECT_EQ(container->getAttrToken(L"a"), AttrContainer::unknownToken);
    EXPECT_EQ(valueOf<int>(*container, L"b"), 0);
}

TEST(RoamscanOptionsCont, ListsOfDifferentLengthsMakeNothing)
{
    auto const container = madeOptionsContainer();
    container->OptionsNames(Strings{L"a", L"b"});
    container->OptionsTypes(Strings{Attr<int>::Class()->name()});
    container->initializeCustomAttributes();
    EXPECT_EQ(container->getNumAttributes(), container->getNumStaticAttributes());
}

TEST(RoamscanOptionsCont, AnEmptyListOfNamesMakesNothing)
{
    auto const container = madeOptionsContainer();
    container->OptionsTypes(Strings{Attr<int>::Class()->name()});
    container->initializeCustomAttributes();
    EXPECT_EQ(container->getNumAttributes(), container->getNumStaticAttributes());
}

TEST(RoamscanOptionsCont, DuplicateCopiesTheListsAndTheOptions)
{
    auto const container = madeOptionsContainer();
    add<int>(*container, L"speed", 7);
    container->updateToCurrentOptions();
    SmartPtr<AttrContainer> const copy(container->duplicate(CreateType::Fresh));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->getClassType(), RoamscanOptionsCont::Class());
    EXPECT_EQ(static_cast<RoamscanOptionsCont&>(*copy).OptionsNames(), Strings{L"speed"});
    EXPECT_EQ(valueOf<int>(*copy, L"speed"), 7);
    // The copies are deep.
    static_cast<RoamscanOptionsCont&>(*copy).OptionsNames(Strings());
    EXPECT_EQ(container->OptionsNames(), Strings{L"speed"});
}

TEST(RoamscanOptionsCont, DuplicateKeepsTheNameAndTheTokens)
{
    auto const container = madeOptionsContainer();
    container->setName(L"mine", 0);
    container->OptionsTypes(Strings{L"Attr<int>"});
    SmartPtr<AttrContainer> const copy(container->duplicate(CreateType::Fresh));
    EXPECT_EQ(copy->getName(), String(L"mine"));
    EXPECT_EQ(static_cast<RoamscanOptionsCont&>(*copy).OptionsTypes(), Strings{L"Attr<int>"});
    EXPECT_EQ(copy->getNumStaticAttributes(), 3U);
}

TEST(RoamscanOptionsCont, DuplicateRestoresObserversAmongTheCopiesWhileRelationsAreKept)
{
    auto const container = madeOptionsContainer();
    add<int>(*container, L"observed", 7);
    container->getAttribute(3)->addObserver(container->getAttribute(1));
    oV::PreserveObserverRelation const relations;
    SmartPtr<AttrContainer> const copy(container->duplicate(CreateType::Fresh));
    auto const* const params = copy->getAttribute(3)->parEx();
    ASSERT_NE(params, nullptr);
    EXPECT_EQ(params->changed.size(), 1U);
    EXPECT_TRUE(params->changed.contains(copy->getAttribute(1)));
}

TEST(RoamscanOptionsCont, DuplicateWithoutASourceIsAFreshInit)
{
    auto const container = madeOptionsContainer();
    add<int>(*container, L"speed", 7);
    container->updateToCurrentOptions();
    SmartPtr<AttrContainer> const copy(container->duplicate(CreateType::NoSource));
    ASSERT_TRUE(copy);
    EXPECT_TRUE(static_cast<RoamscanOptionsCont&>(*copy).OptionsNames().empty());
    EXPECT_TRUE(static_cast<RoamscanOptionsCont&>(*copy).OptionsTypes().empty());
    EXPECT_EQ(copy->getNumAttributes(), copy->getNumStaticAttributes());
    EXPECT_EQ(copy->getName(), String(L"RoamscanOptionsCont"));
}
