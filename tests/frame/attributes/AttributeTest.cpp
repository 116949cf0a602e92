#include "tests/frame/attributes/Watcher.h"
#include "tests/support/Attributes.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace
{

using namespace support::attributes;
using oV::Observer;
using oV::ThreadLocalStorage;

SmartPtr<Attr<int>> intAttribute()
{
    return SmartPtr<Attr<int>>(new Attr<int>(CreateType::Fresh, nullptr));
}

SmartPtr<AttrContainer> namedContainer(wchar_t const* name)
{
    auto container = initialisedContainer();
    container->setName(name, 0);
    return container;
}

TEST(Attribute, HasAClassRecord)
{
    EXPECT_EQ(std::wstring(Attribute::Class()->name()), L"Attribute");
    EXPECT_EQ(Attribute::Class()->parent(), Observer::Class());
}

TEST(Attribute, Token3IsTheKeywordOfAValue)
{
    EXPECT_EQ(Attribute::keyTable().tokenToKey(3), L"value");
    EXPECT_EQ(Attribute::keyTable().keyToToken(L"value"), 3U);
    EXPECT_EQ(Attribute::keyTable().keyToToken(L"Value"), 0xFFFFFFFFU);
}

// The flag word

TEST(Attribute, BitValue4SilencesAndBitValue8MarksAWeakValue)
{
    EXPECT_EQ(Attribute::silentFlag, 4U);
    EXPECT_EQ(Attribute::weakValueFlag, 8U);
    auto const attribute = intAttribute();
    attribute->setFlag(Attribute::weakValueFlag, true);
    EXPECT_EQ(attribute->flags(), 8U);
    EXPECT_TRUE(attribute->hasFlag(Attribute::weakValueFlag));
    EXPECT_FALSE(attribute->hasFlag(Attribute::silentFlag));
    attribute->setFlag(Attribute::silentFlag, true);
    EXPECT_EQ(attribute->flags(), 12U);
    attribute->setFlag(Attribute::weakValueFlag, false);
    EXPECT_EQ(attribute->flags(), 4U);
}

TEST(Attribute, AChangeLeavesTheWeakMark)
{
    auto const attribute = intAttribute();
    attribute->setFlag(Attribute::weakValueFlag, true);
    attribute->assignFrom(5, nullptr, nullptr);
    attribute->assignFromString(L"6", nullptr, nullptr);
    attribute->assignSilently(7, nullptr, nullptr);
    EXPECT_EQ(attribute->flags(), 8U);
}

TEST(Attribute, TheMarkOfTheMemoryCannotBeSet)
{
    auto const attribute = intAttribute();
    attribute->setFlag(0xFFFF, true);
    EXPECT_FALSE(attribute->isInBlock());
    SmartPtr<Attribute> const copy(attribute->duplicateAttr(CreateType::Fresh, true));
    EXPECT_EQ(copy->flags(), 0x7FFFU);
}

// Names and places

TEST(Attribute, WithoutAContainerHasNoNameAndNoPlace)
{
    auto const attribute = intAttribute();
    EXPECT_TRUE(attribute->getName().isNil());
    EXPECT_TRUE(attribute->inqObjPath().isNil());
    EXPECT_FALSE(attribute->isPartOfMainTree());
    EXPECT_EQ(attribute->lookupObject(), nullptr);
    EXPECT_EQ(attribute->getLocation(0xFFFFFFFF), nullptr);
    EXPECT_EQ(attribute->inqObserver(L"Anything"), nullptr);
}

// A container that belongs to itself and is in the host's tree.
class PlacedContainer : public AttrContainer
{
public:
    using AttrContainer::AttrContainer;
    [[nodiscard]] AttrContainer* lookupObject() override { return this; }
    [[nodiscard]] String inqDisplayPath() const override { return L"My box"; }
    [[nodiscard]] String inqObjPath() const override { return L"Root/Box"; }
    [[nodiscard]] bool isPartOfMainTree() const override { return true; }
};

TEST(Attribute, InAContainerIsFoundThroughIt)
{
    SmartPtr<AttrContainer> const container(new PlacedContainer(CreateType::Fresh, nullptr));
    container->init(CreateType::Fresh, nullptr);
    container->setName(L"Box", 0);
    auto const plain = intAttribute();
    SmartPtr<CustAttr<bool>> const custom(new CustAttr<bool>(CreateType::Fresh, nullptr));
    container->addAttribute(plain.get(), L"Size");
    container->addAttribute(custom.get(), L"Open");
    for (Attribute* const attribute :
         {static_cast<Attribute*>(plain.get()), static_cast<Attribute*>(custom.get())})
    {
        EXPECT_EQ(attribute->getLocation(0xFFFFFFFF), container.get());
        EXPECT_EQ(attribute->lookupObject(), container.get());
        EXPECT_TRUE(attribute->isPartOfMainTree());
    }
    EXPECT_EQ(plain->getName(), L"Size");
    EXPECT_EQ(plain->inqObjPath(), L"Root/Box/Size");
    EXPECT_EQ(plain->inqDisplayPath(), L"My box/Size");
    EXPECT_EQ(plain->inqObserver(L"Size"), plain.get());
    EXPECT_EQ(plain->inqObserver(L"Open"), nullptr);
}

TEST(Attribute, BelongsToWhatItsContainerBelongsTo)
{
    auto const container = namedContainer(L"Box"); // belongs to nothing
    auto const attribute = intAttribute();
    container->addAttribute(attribute.get(), L"Size");
    EXPECT_EQ(attribute->getLocation(0xFFFFFFFF), container.get());
    EXPECT_EQ(attribute->lookupObject(), nullptr);
    EXPECT_FALSE(attribute->isPartOfMainTree());
}

TEST(Attribute, TheLocationOfACustomOneIsOnlyWhatWasSet)
{
    auto const container = namedContainer(L"Box");
    SmartPtr<CustAttr<bool>> const custom(new CustAttr<bool>(CreateType::Fresh, nullptr));
    container->addAttribute(custom.get(), L"Open");
    custom->setLocation(nullptr);
    EXPECT_EQ(custom->getLocation(0xFFFFFFFF), nullptr);
}

TEST(Attribute, OutlivesItsContainer)
{
    auto container = namedContainer(L"Box");
    SmartPtr<Attribute> const fixed(container->getAttribute(0));
    SmartPtr<CustAttr<bool>> const custom(new CustAttr<bool>(CreateType::Fresh, nullptr));
    container->addAttribute(custom.get(), L"Open");
    container.reset();
    EXPECT_EQ(fixed->referenceCount(), 1U);
    EXPECT_EQ(custom->referenceCount(), 1U);
    for (Attribute* const attribute : {fixed.get(), static_cast<Attribute*>(custom.get())}) {
        EXPECT_EQ(attribute->getLocation(0xFFFFFFFF), nullptr);
        EXPECT_EQ(attribute->lookupObject(), nullptr);
        EXPECT_FALSE(attribute->isPartOfMainTree());
    }
    EXPECT_EQ(custom->inqObjPath(), L"Open");
    EXPECT_EQ(static_cast<Attr<String>&>(*fixed).getValue(), L"Box");
    static_cast<Attr<String>&>(*fixed).assignFrom(L"Free", nullptr, nullptr);
    EXPECT_EQ(static_cast<Attr<String>&>(*fixed).getValue(), L"Free");
}

// A holder that stores its container.
class PlacedHolder : public oV::AttrVal<int>
{
public:
    explicit PlacedHolder(AttrContainer* container) : AttrVal(0), container_(container) {}
    [[nodiscard]] AttrContainer* lookUpLocation(unsigned int token) const override
    {
        return token == 1 ? container_ : nullptr;
    }
    bool setLocation(AttrContainer* container) override
    {
        container_ = container;
        return true;
    }

private:
    AttrContainer* container_;
};

class PlacedAttr : public Attr<int>
{
public:
    explicit PlacedAttr(AttrContainer* container) : Attr(CreateType::Fresh, nullptr)
    {
        setHolder(std::make_unique<PlacedHolder>(container));
    }
};

TEST(Attribute, APlainOneAsksItsHolderForTheLocationFirst)
{
    auto const known = namedContainer(L"Known");
    auto const holding = namedContainer(L"Holding");
    SmartPtr<PlacedAttr> const attribute(new PlacedAttr(nullptr));
    holding->addAttribute(attribute.get(), L"A"); // also stores the container in the holder
    EXPECT_EQ(attribute->getLocation(1), holding.get());
    EXPECT_TRUE(attribute->setLocation(known.get()));
    EXPECT_EQ(attribute->getLocation(1), known.get());
    EXPECT_EQ(attribute->getLocation(2), holding.get());
}

// Memory

TEST(AttributeMemory, OnTheHeapIsFreed) // the address sanitizer sees to the rest
{
    auto const attribute = intAttribute();
    EXPECT_FALSE(attribute->isInBlock());
}

TEST(AttributeMemory, AnAttributeMarkedAsLivingInABlockIsDestroyedButNotFreed)
{
    alignas(std::max_align_t) std::array<std::byte, sizeof(Attr<int>)> place{};
    alignas(std::max_align_t) std::array<std::byte, sizeof(CustAttr<int>)> secondPlace{};
    SmartPtr<support::Watcher> const watcher(new support::Watcher);
    {
        SmartPtr<Attribute> const first(new (place.data()) Attr<int>(CreateType::Fresh, nullptr));
        SmartPtr<Attribute> const second(new (secondPlace.data()) CustAttr<int>(CreateType::Fresh, nullptr));
        EXPECT_TRUE(first->isInBlock());
        EXPECT_TRUE(second->isInBlock());
        EXPECT_EQ(static_cast<void*>(first.get()), place.data());
        watcher->watch(*first);
    }
    EXPECT_TRUE(watcher->parEx()->observed.empty()); // the destructor has run
}

TEST(AttributeMemory, TheThreadsByteMarksAnAttributeWhileItIsMadeAndIsUsedUp)
{
    alignas(std::max_align_t) std::array<std::byte, sizeof(Attr<int>)> place{};
    auto const& data = ThreadLocalStorage::the().makeData();
    SmartPtr<Attribute> inBlock(new (place.data()) Attr<int>(CreateType::Fresh, nullptr));
    EXPECT_EQ(data.attributeInBlock, 0U);
    auto const onHeap = intAttribute();
    EXPECT_FALSE(onHeap->isInBlock());
    inBlock.reset();
    EXPECT_EQ(data.attributeInBlock, 0U);
}

TEST(AttributeMemory, ADuplicateOfAnAttributeInABlockIsOnTheHeap)
{
    alignas(std::max_align_t) std::array<std::byte, sizeof(Attr<int>)> place{};
    SmartPtr<Attribute> const inBlock(new (place.data()) Attr<int>(CreateType::Fresh, nullptr));
    ThreadLocalStorage::the().makeData().attributeInBlock = 1; // not cleared by an earlier operation
    SmartPtr<Attribute> const asPlain(inBlock->duplicateAttr(CreateType::Fresh, true));
    SmartPtr<Attribute> const asCustom(inBlock->duplicateAttr(CreateType::NoSource, false));
    EXPECT_FALSE(asPlain->isInBlock());
    EXPECT_FALSE(asCustom->isInBlock());
}

TEST(AttributeMemory, AByteThatWasLeftSetChangesNothingOnTheHeap) // the sanitizers report a leak otherwise
{
    auto& data = ThreadLocalStorage::the().makeData();
    data.attributeInBlock = 1;
    auto onHeap = intAttribute();
    EXPECT_FALSE(onHeap->isInBlock());
    data.attributeInBlock = 1;
    onHeap.reset();
    EXPECT_EQ(data.attributeInBlock, 0U);
}

TEST(AttributeMemory, AttributesDestroyedByTheDestructionOfAnotherAreFreedByTheirOwnFlags)
{
    alignas(std::max_align_t) std::array<std::byte, sizeof(Attr<int>)> place{};
    // Each of the two destroys the other kind when its subject is destroyed.
    class Dropper : public Observer
    {
    public:
        explicit Dropper(SmartPtr<Attribute> toDrop) : toDrop_(std::move(toDrop)) {}
        void informDelete(Observer*) noexcept override { toDrop_.reset(); }

    private:
        SmartPtr<Attribute> toDrop_;
    };
    SmartPtr<Attribute> inBlock(new (place.data()) Attr<int>(CreateType::Fresh, nullptr));
    SmartPtr<Dropper> const dropsHeap(new Dropper(intAttribute()));
    inBlock->addObserver(dropsHeap.get());
    auto onHeap = intAttribute();
    SmartPtr<Dropper> const dropsBlock(new Dropper(inBlock));
    onHeap->addObserver(dropsBlock.get());
    inBlock.reset();
    onHeap.reset(); // ends the one in the block, which ends another one on the heap
}

} // namespace
