#include "tests/frame/attributes/Watcher.h"
#include "tests/support/Attributes.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/CachedAttributeInfo.h>
#include <roamscan/frame/attributes/NewValueInfo.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/formats/WriteContext.h>
#include <roamscan/frame/observers/BlockObserving.h>
#include <roamscan/frame/observers/InfoFailed.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace support::attributes;
using Bv_1_1::ObserverInfo;
using oV::BlockObserving;
using oV::CachedAttributeInfo;
using oV::InfoFailed;
using oV::ModifiedListener;
using oV::NewValueInfo;
using oV::Observer;
using oV::ThreadLocalStorage;
using Calls = std::vector<std::string>;
using Notice = oV::Observer::Notice;

SmartPtr<Attr<int>> number(int value = 0)
{
    SmartPtr<Attr<int>> attribute(new Attr<int>(CreateType::Fresh, nullptr));
    attribute->assignFrom(value, nullptr, nullptr);
    return attribute;
}

void refuse(Observer& subject)
{
    subject.addNotifyInfo(SmartPtr<InfoFailed>(new InfoFailed).get());
}

std::size_t recordsOf(Observer const& observer)
{
    return observer.parEx() == nullptr ? 0 : observer.parEx()->infos.size();
}

class Change : public testing::Test
{
protected:
    ~Change() override
    {
        watcher->whenChanged = nullptr;
        watcher->whenToChange = nullptr;
        Attribute::setIsCachedAttributePending(false);
    }

    SmartPtr<Attr<int>> attribute = number(1);
    SmartPtr<support::Watcher> watcher{new support::Watcher};
    SmartPtr<support::Watcher> originator{new support::Watcher};
};

// Announcement and report

TEST_F(Change, NotifiesBeforeStoresAndNotifiesAfter)
{
    watcher->watch(*attribute);
    Calls seen;
    watcher->whenToChange = [&](Observer& subject) {
        EXPECT_EQ(&subject, attribute.get());
        EXPECT_EQ(watcher->lastOriginator, originator.get());
        EXPECT_EQ(attribute->getValue(), 1);
        auto* const info = subject.lookupNotifyInfo(NewValueInfo<int>::Class());
        ASSERT_NE(info, nullptr);
        EXPECT_EQ(info->referenceCount(), 1U);
        EXPECT_EQ(static_cast<NewValueInfo<int>*>(info)->newValue(), 2);
    };
    watcher->whenChanged = [&](Observer&) { EXPECT_EQ(attribute->getValue(), 2); };
    EXPECT_TRUE(attribute->assignFrom(2, originator.get(), nullptr));
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed"}));
    EXPECT_EQ(watcher->lastOriginator, originator.get());
    EXPECT_EQ(recordsOf(*attribute), 0U);
}

TEST_F(Change, IsReportedAlsoWhenTheValueIsTheSame)
{
    watcher->watch(*attribute);
    EXPECT_TRUE(attribute->assignFrom(1, nullptr, nullptr));
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed"}));
}

TEST_F(Change, DoesNotNotifyBeforeWithoutExtraParameters)
{
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(attribute->parEx(), nullptr);
}

TEST_F(Change, DoesNotNotifyBeforeWhenTheSecondListIsEmpty)
{
    attribute->addObserver(watcher.get(), Notice::Changed);
    attribute->parEx()->flags |= 4;
    refuse(*attribute); // an announcement would see it
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(watcher->calls, Calls{"changed"});
}

TEST_F(Change, DoesNotNotifyBeforeWhenTheFlagIsClear)
{
    watcher->watch(*attribute);
    attribute->parEx()->flags &= ~4U;
    watcher->whenToChange = refuse;
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(watcher->calls, Calls{"changed"});
    EXPECT_EQ(attribute->getValue(), 2);
}

TEST_F(Change, CanBeVetoed)
{
    watcher->watch(*attribute);
    watcher->whenToChange = refuse;
    EXPECT_FALSE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), 1);
    EXPECT_EQ(watcher->calls, Calls{"toChange"});
    EXPECT_EQ(recordsOf(*attribute), 0U);
    watcher->whenToChange = nullptr;
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
}

TEST_F(Change, AnEarlierVetoIsRemovedByATouch)
{
    watcher->watch(*attribute);
    watcher->whenToChange = refuse;
    attribute->assignSilently(2, nullptr, nullptr); // ignores the veto
    EXPECT_EQ(recordsOf(*attribute), 0U);
    watcher->whenToChange = nullptr;
    EXPECT_TRUE(attribute->assignFrom(3, nullptr, nullptr));
}

TEST_F(Change, AnObserverThatThrowsBeforeItLeavesTheValueAndNoRecord)
{
    watcher->watch(*attribute);
    watcher->whenToChange = [](Observer&) { throw std::runtime_error("no"); };
    EXPECT_THROW(attribute->assignFrom(2, nullptr, nullptr), std::runtime_error);
    EXPECT_EQ(attribute->getValue(), 1);
    EXPECT_EQ(recordsOf(*attribute), 0U);
    watcher->whenToChange = nullptr;
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
}

TEST_F(Change, AnObserverThatThrowsAfterItLeavesTheNewValueAndNoRecord)
{
    watcher->watch(*attribute);
    watcher->whenChanged = [](Observer&) { throw std::runtime_error("no"); };
    EXPECT_THROW(attribute->assignFrom(2, nullptr, nullptr), std::runtime_error);
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(recordsOf(*attribute), 0U);
}

TEST_F(Change, TheLastReferenceMayBeRemovedDuringTheNotificationBefore)
{
    watcher->watch(*attribute);
    watcher->whenToChange = [&](Observer&) { attribute.reset(); };
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_FALSE(attribute);
}

TEST_F(Change, TheLastReferenceMayGoWhileAnyKindOfChangeIsAnnounced)
{
    for (bool const fromText : {false, true}) {
        attribute = number(1);
        watcher->watch(*attribute);
        watcher->whenToChange = [&](Observer&) { attribute.reset(); };
        if (fromText) {
            attribute->assignFromString(L"2", nullptr, nullptr);
        } else {
            attribute->assignSilently(2, nullptr, nullptr);
        }
        EXPECT_FALSE(attribute);
    }
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed", "toChange", "changed"}));
}

TEST_F(Change, TheCallersVariableMayChangeWhileItIsAnnounced)
{
    watcher->watch(*attribute);
    int value = 2;
    watcher->whenToChange = [&](Observer&) { value = 9; };
    EXPECT_TRUE(attribute->assignFrom(value, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), 2);
    value = 3;
    attribute->assignSilently(value, nullptr, nullptr);
    EXPECT_EQ(attribute->getValue(), 3);
}

// Counts the calls of touch().
class TouchedAttr : public Attr<int>
{
public:
    TouchedAttr() : Attr(CreateType::Fresh, nullptr) {}
    void touch(Observer* observer, void* parameter) override
    {
        ++touches;
        Attr::touch(observer, parameter);
    }

    int touches = 0;
};

TEST_F(Change, AssignFromReportsThroughTheBaseAndTheOtherAssignmentsThroughTouch)
{
    SmartPtr<TouchedAttr> const touched(new TouchedAttr);
    watcher->watch(*touched);
    touched->assignFrom(1, nullptr, nullptr);
    EXPECT_EQ(touched->touches, 0);
    touched->assignSilently(2, nullptr, nullptr);
    EXPECT_EQ(touched->touches, 1);
    touched->assignFromString(L"3", nullptr, nullptr);
    EXPECT_EQ(touched->touches, 2);
    EXPECT_EQ(watcher->calls.size(), 6U);
}

TEST_F(Change, AnObserverMayChangeTheAttributeAgain)
{
    attribute->addObserver(watcher.get(), Notice::Changed);
    watcher->whenChanged = [&](Observer&) {
        watcher->whenChanged = nullptr;
        attribute->assignFrom(3, nullptr, nullptr);
    };
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), 3);
    EXPECT_EQ(watcher->calls.size(), 2U);
}

TEST_F(Change, SilentAssignmentNotifiesBeforeAndAfterButCannotBeVetoed)
{
    watcher->watch(*attribute);
    watcher->whenToChange = [&](Observer& subject) {
        EXPECT_EQ(subject.lookupNotifyInfo(NewValueInfo<int>::Class()), nullptr);
        EXPECT_EQ(attribute->getValue(), 1);
        refuse(subject);
    };
    attribute->assignSilently(2, originator.get(), nullptr);
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed"}));
    EXPECT_EQ(watcher->lastOriginator, originator.get());
}

TEST_F(Change, AssignmentFromTextNotifiesBeforeAndAfterButCannotBeVetoed)
{
    watcher->watch(*attribute);
    watcher->whenToChange = [&](Observer& subject) {
        EXPECT_EQ(attribute->getValue(), 1);
        refuse(subject);
    };
    attribute->assignFromString(L"2", originator.get(), nullptr);
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed"}));
}

TEST_F(Change, TheTextMayBeDestroyedDuringTheNotificationBefore)
{
    watcher->watch(*attribute);
    auto text = std::make_unique<String>(L"2");
    watcher->whenToChange = [&](Observer&) { text.reset(); };
    attribute->assignFromString(*text, nullptr, nullptr);
    EXPECT_EQ(attribute->getValue(), 2);
}

TEST_F(Change, AssignAttrDoesNotNotify)
{
    watcher->watch(*attribute);
    attribute->assignAttr(*number(5));
    EXPECT_EQ(attribute->getValue(), 5);
    EXPECT_TRUE(watcher->calls.empty());
}

TEST_F(Change, ACopyHasNoObservers)
{
    watcher->watch(*attribute);
    SmartPtr<Attribute> const copy(attribute->duplicateAttr(CreateType::Fresh, true));
    EXPECT_EQ(copy->parEx(), nullptr);
}

// Blocked notification

TEST_F(Change, DoesNotNotifyWhileNotificationIsBlocked)
{
    watcher->watch(*attribute);
    watcher->whenToChange = refuse;
    EXPECT_FALSE(Attribute::isObservingBlocked());
    {
        BlockObserving const blocked;
        EXPECT_TRUE(Attribute::isObservingBlocked());
        EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
        attribute->assignSilently(3, nullptr, nullptr);
        attribute->touch(nullptr, nullptr);
        std::thread([] { EXPECT_FALSE(Attribute::isObservingBlocked()); }).join();
    }
    EXPECT_FALSE(Attribute::isObservingBlocked());
    EXPECT_EQ(attribute->getValue(), 3);
    EXPECT_TRUE(watcher->calls.empty());
    EXPECT_EQ(recordsOf(*attribute), 0U);
}

// Modified listeners

class Listener : public ModifiedListener
{
public:
    void attributeModified(Attribute& attribute, Observer* observer, void* parameter) override
    {
        values.push_back(static_cast<Attr<int>&>(attribute).getValue());
        lastObserver = observer;
        lastParameter = parameter;
    }

    std::vector<int> values; // at the time of the call
    Observer* lastObserver = nullptr;
    void* lastParameter = nullptr;
};

class Modified : public Change
{
protected:
    Modified() { Attribute::addModifiedListener(listener.get()); }
    ~Modified() override { Attribute::removeModifiedListener(listener.get()); }

    SmartPtr<Listener> listener{new Listener};
};

TEST_F(Modified, ListenersAreCalledBeforeADifferentValueIsStored)
{
    int parameter = 0;
    EXPECT_TRUE(Attribute::isAnyModifiedListenerExisting());
    attribute->assignFrom(2, originator.get(), &parameter);
    EXPECT_EQ(listener->values, std::vector<int>{1});
    EXPECT_EQ(listener->lastObserver, originator.get());
    EXPECT_EQ(listener->lastParameter, &parameter);
    attribute->assignFrom(2, nullptr, nullptr);
    EXPECT_EQ(listener->values.size(), 1U);
}

TEST_F(Modified, ListenersAreNotCalledForAnAttributeWithTheSilentFlag)
{
    attribute->setFlag(4, true);
    attribute->assignFrom(2, nullptr, nullptr);
    EXPECT_TRUE(listener->values.empty());
    attribute->setFlag(4, false);
    attribute->setFlag(8, true);
    attribute->assignFrom(3, nullptr, nullptr);
    EXPECT_EQ(listener->values, std::vector<int>{2});
}

TEST_F(Modified, ListenersAreNotCalledForAVetoedOrSilentChange)
{
    watcher->watch(*attribute);
    watcher->whenToChange = refuse;
    attribute->assignFrom(2, nullptr, nullptr);
    attribute->assignSilently(3, nullptr, nullptr);
    attribute->assignFromString(L"4", nullptr, nullptr);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(Modified, ListenersHoldAReferenceUntilTheyAreRemoved)
{
    EXPECT_EQ(listener->referenceCount(), 2U);
    EXPECT_TRUE(Attribute::removeModifiedListener(listener.get()));
    EXPECT_FALSE(Attribute::removeModifiedListener(listener.get()));
    EXPECT_FALSE(Attribute::removeModifiedListener(nullptr));
    EXPECT_EQ(listener->referenceCount(), 1U);
    EXPECT_FALSE(Attribute::isAnyModifiedListenerExisting());
    Attribute::addModifiedListener(nullptr);
    EXPECT_FALSE(Attribute::isAnyModifiedListenerExisting());
    attribute->assignFrom(2, nullptr, nullptr);
    EXPECT_TRUE(listener->values.empty());
}

TEST(ModifiedListeners, MayComeAndGoWhileOtherThreadsChangeAttributesOfTheirOwn)
{
    class Counter : public ModifiedListener
    {
    public:
        void attributeModified(Attribute&, Observer*, void*) override { calls.fetch_add(1); }
        std::atomic<int> calls = 0;
    };
    SmartPtr<Counter> const always(new Counter);
    Attribute::addModifiedListener(always.get());
    constexpr int changes = 500;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([] {
            auto const own = number();
            for (int value = 1; value <= changes; ++value) {
                own->assignFrom(value, nullptr, nullptr);
            }
        });
    }
    for (int round = 0; round < changes; ++round) {
        SmartPtr<Counter> const passing(new Counter);
        Attribute::addModifiedListener(passing.get());
        EXPECT_TRUE(Attribute::removeModifiedListener(passing.get()));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(Attribute::removeModifiedListener(always.get()));
    EXPECT_EQ(always->calls.load(), 2 * changes);
}

TEST_F(Modified, OneListenerStaysWhenAnotherIsRemoved)
{
    SmartPtr<Listener> const second(new Listener);
    Attribute::addModifiedListener(second.get());
    EXPECT_TRUE(Attribute::removeModifiedListener(second.get()));
    EXPECT_TRUE(Attribute::isAnyModifiedListenerExisting());
    attribute->assignFrom(2, nullptr, nullptr);
    EXPECT_EQ(listener->values, std::vector<int>{1});
    EXPECT_TRUE(second->values.empty());
}

// Removes itself, as a listener and, with that, as an object.
class ListenerOnce : public Listener
{
public:
    void attributeModified(Attribute& attribute, Observer* observer, void* parameter) override
    {
        Listener::attributeModified(attribute, observer, parameter);
        Attribute::removeModifiedListener(this);
    }

protected:
    ~ListenerOnce() override { EXPECT_FALSE(Attribute::removeModifiedListener(this)); }
};

TEST_F(Modified, AListenerMayRemoveItselfWhileItIsCalledAndUseTheListAtItsEnd)
{
    SmartPtr<ListenerOnce> const kept(new ListenerOnce);
    Attribute::addModifiedListener(kept.get());
    Attribute::addModifiedListener(new ListenerOnce);
    attribute->assignFrom(2, nullptr, nullptr);
    attribute->assignFrom(3, nullptr, nullptr);
    EXPECT_EQ(kept->values, std::vector<int>{1});
    EXPECT_EQ(kept->referenceCount(), 1U);
    EXPECT_EQ(listener->values, (std::vector<int>{1, 2}));
    Attribute::addModifiedListener(new ListenerOnce);
    SmartPtr<ListenerOnce> last(new ListenerOnce);
    Attribute::addModifiedListener(last.get());
    ListenerOnce const* const address = last.get();
    last.reset();
    EXPECT_TRUE(Attribute::removeModifiedListener(address)); // destroyed after the lock is released
    attribute->assignFrom(4, nullptr, nullptr);
}

// The cached-value path

class CachedPath : public Change
{
protected:
    CachedPath()
    {
        ++ThreadLocalStorage::the().makeData().cachedPathCount;
        attribute->addNotifyInfo(record.get());
        Attribute::setIsCachedAttributePending(true);
    }
    ~CachedPath() override { --ThreadLocalStorage::the().makeData().cachedPathCount; }

    void expectResolved() const
    {
        EXPECT_FALSE(Attribute::isCachedAttributePending());
        EXPECT_EQ(attribute->lookupNotifyInfo(CachedAttributeInfo::Class()), nullptr);
        EXPECT_EQ(record->referenceCount(), 1U);
    }

    SmartPtr<Attr<int>> cached = number(10);
    SmartPtr<CachedAttributeInfo> record{new CachedAttributeInfo(cached.get())};
};

TEST_F(CachedPath, ThePendingFlagIsTheThreads)
{
    EXPECT_TRUE(Attribute::isCachedAttributePending());
    std::thread([] {
        EXPECT_FALSE(Attribute::isCachedAttributePending());
        Attribute::setIsCachedAttributePending(false);
    }).join();
    EXPECT_TRUE(Attribute::isCachedAttributePending());
}

TEST_F(CachedPath, AllReadsGiveThePendingValue)
{
    EXPECT_EQ(attribute->getValue(), 10);
    String text;
    attribute->getValueString(text);
    EXPECT_EQ(text, L"10");
    EXPECT_TRUE(attribute->equalsAttr(*cached));
    auto const copy = number();
    copy->assignAttr(*attribute);
    EXPECT_EQ(copy->getValue(), 10);
    SmartPtr<Attribute> const duplicate(attribute->duplicateAttr(CreateType::Fresh, true));
    EXPECT_EQ(static_cast<Attr<int>&>(*duplicate).getValue(), 10);
    Attribute::setIsCachedAttributePending(false);
    EXPECT_EQ(attribute->getValue(), 1);
    String ownText;
    attribute->getValueString(ownText);
    EXPECT_EQ(ownText, L"1");
}

TEST_F(CachedPath, ComparisonReadsThePendingValueOfEitherSide)
{
    EXPECT_TRUE(attribute->equalsAttr(*number(10)));
    EXPECT_TRUE(number(10)->equalsAttr(*attribute));
    EXPECT_FALSE(number(1)->equalsAttr(*attribute));
}

TEST_F(CachedPath, WritingWritesThePendingValue)
{
    std::ostringstream stream;
    oV::WriteContext context;
    EXPECT_EQ(attribute->writeTo(&stream, &context), 0);
    EXPECT_EQ(stream.str(), "value 10;\n");
}

TEST_F(CachedPath, TwoAttributesMayNameEachOther)
{
    SmartPtr<CachedAttributeInfo> const back(new CachedAttributeInfo(attribute.get()));
    cached->addNotifyInfo(back.get());
    EXPECT_EQ(attribute->getValue(), 10); // the own value of the attribute that the record names
    EXPECT_EQ(cached->getValue(), 1);
    cached->removeNotifyInfos(false);
}

TEST_F(CachedPath, AnAttributeWithoutARecordReadsItsOwnValue)
{
    EXPECT_EQ(number(5)->getValue(), 5);
}

TEST_F(CachedPath, ARecordThatNamesNoAttributeOfTheTypeIsNotRead)
{
    attribute->removeNotifyInfos(false);
    attribute->addNotifyInfo(SmartPtr<CachedAttributeInfo>(new CachedAttributeInfo(nullptr)).get());
    EXPECT_EQ(attribute->getValue(), 1);
    SmartPtr<Attr<bool>> const flag(new Attr<bool>(CreateType::Fresh, nullptr));
    attribute->addNotifyInfo(SmartPtr<CachedAttributeInfo>(new CachedAttributeInfo(flag.get())).get());
    EXPECT_EQ(attribute->getValue(), 1);
}

TEST_F(CachedPath, AssignFromResolvesThePendingValue)
{
    watcher->watch(*attribute);
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed"}));
    expectResolved();
}

TEST_F(CachedPath, AnyCountOtherThanZeroSelectsThePath)
{
    ThreadLocalStorage::the().getData()->cachedPathCount = 2;
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    expectResolved();
    ThreadLocalStorage::the().getData()->cachedPathCount = 1;
}

TEST_F(CachedPath, AVetoedAssignmentRemovesTheRecordsAndKeepsTheOwnValue)
{
    watcher->watch(*attribute);
    watcher->whenToChange = refuse;
    EXPECT_FALSE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(recordsOf(*attribute), 0U);
    EXPECT_TRUE(Attribute::isCachedAttributePending());
    EXPECT_EQ(attribute->getValue(), 1);
}

TEST_F(CachedPath, WhileObservingIsBlockedAssignFromOnlyStores)
{
    SmartPtr<Listener> const listener(new Listener);
    Attribute::addModifiedListener(listener.get());
    watcher->watch(*attribute);
    watcher->whenToChange = refuse;
    {
        BlockObserving const blocked;
        EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    }
    Attribute::removeModifiedListener(listener.get());
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_TRUE(watcher->calls.empty());
    EXPECT_TRUE(listener->values.empty());
    EXPECT_EQ(recordsOf(*attribute), 0U);
    expectResolved();
}

TEST_F(CachedPath, WhileObservingIsBlockedAnEarlierRefusalDoesNotCount)
{
    watcher->watch(*attribute);
    refuse(*attribute);
    BlockObserving const blocked;
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), 2);
}

TEST_F(CachedPath, ModifiedListenersHearOfValuesThatDifferFromThePendingOne)
{
    SmartPtr<Listener> const listener(new Listener);
    Attribute::addModifiedListener(listener.get());
    ThreadLocalStorage::the().getData()->cachedPathCount = 0; // so the value stays pending
    attribute->assignFrom(10, nullptr, nullptr);
    EXPECT_TRUE(listener->values.empty());
    attribute->assignFrom(1, nullptr, nullptr);
    EXPECT_EQ(listener->values, std::vector<int>{10});
    ThreadLocalStorage::the().getData()->cachedPathCount = 1;
    Attribute::removeModifiedListener(listener.get());
}

TEST_F(CachedPath, WithoutTheFlagAssignFromLeavesTheRecord)
{
    Attribute::setIsCachedAttributePending(false);
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(attribute->lookupNotifyInfo(CachedAttributeInfo::Class()), record.get());
}

TEST_F(CachedPath, OutsideThePathAssignFromKeepsThePendingValue)
{
    ThreadLocalStorage::the().getData()->cachedPathCount = 0;
    EXPECT_TRUE(attribute->assignFrom(2, nullptr, nullptr));
    ThreadLocalStorage::the().getData()->cachedPathCount = 1;
    EXPECT_EQ(attribute->getValue(), 10);
    Attribute::setIsCachedAttributePending(false);
    EXPECT_EQ(attribute->getValue(), 2);
}

TEST_F(CachedPath, TouchAssignsThePendingValue)
{
    watcher->watch(*attribute);
    attribute->touch(originator.get(), nullptr);
    EXPECT_EQ(attribute->getValue(), 10);
    EXPECT_EQ(watcher->calls, Calls{"changed"});
    EXPECT_EQ(watcher->lastOriginator, originator.get());
    expectResolved();
}

TEST_F(CachedPath, WhileObservingIsBlockedTouchReportsNothing)
{
    watcher->watch(*attribute);
    BlockObserving const blocked;
    attribute->touch(nullptr, nullptr);
    EXPECT_EQ(attribute->getValue(), 10);
    EXPECT_TRUE(watcher->calls.empty());
    expectResolved();
}

TEST_F(CachedPath, TouchLeavesARecordThatNamesNoAttribute)
{
    attribute->removeNotifyInfos(false);
    SmartPtr<CachedAttributeInfo> const empty(new CachedAttributeInfo(nullptr));
    attribute->addNotifyInfo(empty.get());
    attribute->touch(nullptr, nullptr);
    EXPECT_EQ(attribute->getValue(), 1);
    EXPECT_TRUE(Attribute::isCachedAttributePending());
    EXPECT_EQ(attribute->lookupNotifyInfo(CachedAttributeInfo::Class()), empty.get());
}

TEST_F(CachedPath, OutsideThePathTouchKeepsThePendingValue)
{
    ThreadLocalStorage::the().getData()->cachedPathCount = 0;
    attribute->touch(nullptr, nullptr);
    ThreadLocalStorage::the().getData()->cachedPathCount = 1;
    EXPECT_TRUE(Attribute::isCachedAttributePending());
    EXPECT_EQ(attribute->lookupNotifyInfo(CachedAttributeInfo::Class()), record.get());
}

TEST_F(CachedPath, AssignFromStringDropsThePendingValue)
{
    attribute->assignFromString(L"2", nullptr, nullptr);
    EXPECT_EQ(attribute->getValue(), 2);
    EXPECT_EQ(attribute->parEx()->infos.capacity(), 0U); // the memory is given back
    expectResolved();
}

TEST_F(CachedPath, AssignFromStringAnnouncesBeforeItDropsThePendingValue)
{
    watcher->watch(*attribute);
    watcher->whenToChange = [&](Observer&) {
        EXPECT_TRUE(Attribute::isCachedAttributePending());
        EXPECT_EQ(attribute->getValue(), 10);
    };
    attribute->assignFromString(L"2", nullptr, nullptr);
    EXPECT_EQ(watcher->calls, (Calls{"toChange", "changed"}));
    expectResolved();
}

TEST_F(CachedPath, ThePendingValueReplacesASilentlyAssignedOne)
{
    attribute->assignSilently(2, nullptr, nullptr); // stores, then touch() assigns the pending value
    EXPECT_EQ(attribute->getValue(), 10);
    expectResolved();
}

TEST(CachedAttributeInfo, NamesTheCachedAttribute)
{
    auto const cached = number();
    SmartPtr<CachedAttributeInfo> const info(new CachedAttributeInfo(cached.get()));
    EXPECT_EQ(info->getCachedAttribute(), cached.get());
    EXPECT_EQ(cached->referenceCount(), 2U);
    EXPECT_EQ(info->getClassType(), CachedAttributeInfo::Class());
    EXPECT_EQ(std::wstring(info->getClassType()->name()), L"CachedAttributeInfo");
    EXPECT_EQ(info->getClassType()->parent(), ObserverInfo::Class());
    SmartPtr<Bv_1_1::BaseNode> const made(CachedAttributeInfo::Class()->create());
    EXPECT_EQ(made->getClassType(), CachedAttributeInfo::Class());
}

} // namespace
