#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/observers/InfoFailed.h>
#include <roamscan/frame/observers/Observer.h>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using Bv_1_1::ObserverInfo;
using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::InfoFailed;
using oV::Observer;
using Notice = oV::Observer::Notice;

using Calls = std::vector<std::string>;

class Subject : public Observer
{
public:
    using Observer::removeNotifyInfosExcept;
};

// Records its notifications, and then calls a function of the test.
class Watcher : public Observer
{
public:
    explicit Watcher(std::string name, Calls* calls = nullptr) : name_(std::move(name)), calls_(calls) {}

    void changedNotify(Observer* subject, Observer* originator) override
    {
        note("changed", subject, originator);
    }
    void toChangeNotify(Observer* subject, Observer* originator) override
    {
        note("toChange", subject, originator);
    }
    void informDelete(Observer* subject) noexcept override
    {
        lastSubject = subject;
        ++deletions;
        if (whenDeleted) {
            whenDeleted();
        }
    }

    std::function<void()> action;
    std::function<void()> whenDeleted;
    Observer* lastSubject = nullptr;
    Observer* lastOriginator = nullptr;
    int deletions = 0;

private:
    void note(std::string const& what, Observer* subject, Observer* originator)
    {
        lastSubject = subject;
        lastOriginator = originator;
        if (calls_ != nullptr) {
            calls_->push_back(name_ + " " + what);
        }
        if (action) {
            action();
        }
    }

    std::string name_;
    Calls* calls_;
};

class OtherInfo : public ObserverInfo
{};

class Notification : public testing::Test
{
protected:
    SmartPtr<Watcher> watcher(std::string const& name)
    {
        return SmartPtr<Watcher>(new Watcher(name, &calls));
    }

    Calls calls;
    SmartPtr<Subject> subject{new Subject};
    SmartPtr<Watcher> a = watcher("a");
    SmartPtr<Watcher> b = watcher("b");
    SmartPtr<Watcher> c = watcher("c");
};

TEST(Observer, DerivesFromTheBaseNode)
{
    EXPECT_TRUE((std::is_base_of_v<Bv_1_1::BaseNode, Observer>));
    EXPECT_EQ(std::wstring(Observer::Class()->name()), L"Observer");
    EXPECT_EQ(Observer::Class()->parent(), Bv_1_1::BaseNode::Class());
    SmartPtr<Subject> const subject(new Subject);
    EXPECT_EQ(subject->getClassType(), Observer::Class());
}

TEST(Observer, OrdersItsVirtualOperations)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    EXPECT_EQ(support::virtualSlot(&Observer::getClassType), 0U); // the destructor takes 1 and 2
    EXPECT_EQ(support::virtualSlot(&Observer::copyFrom), 3U);
    EXPECT_EQ(support::virtualSlot(&Observer::updateObservers), 4U);
    EXPECT_EQ(support::virtualSlot(&Observer::notifyToChange), 5U);
    EXPECT_EQ(support::virtualSlot(&Observer::notifyChanged), 6U);
    EXPECT_EQ(support::virtualSlot(&Observer::changedNotify), 7U);
    EXPECT_EQ(support::virtualSlot(&Observer::toChangeNotify), 8U);
    EXPECT_EQ(support::virtualSlot(&Observer::inqObserver), 9U);
    EXPECT_EQ(support::virtualSlot(&Observer::getName), 10U);
    EXPECT_EQ(support::virtualSlot(&Observer::inqDisplayPath), 11U);
    EXPECT_EQ(support::virtualSlot(&Observer::inqObjPath), 12U);
    EXPECT_EQ(support::virtualSlot(&Observer::isPartOfMainTree), 13U);
    EXPECT_EQ(support::virtualSlot(&Observer::readFrom), 14U);
    EXPECT_EQ(support::virtualSlot(&Observer::writeTo), 15U);
    EXPECT_EQ(support::virtualSlot(&Observer::informDelete), 16U);
    EXPECT_EQ(support::virtualSlot(&Observer::lookupObject), 17U);
}

TEST(Observer, PlainObserversReturnNeutralValues)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<Subject> const other(new Subject);
    EXPECT_FALSE(subject->copyFrom(other.get()));
    EXPECT_EQ(subject->inqObserver(L"any"), nullptr);
    EXPECT_TRUE(subject->getName().isNil());
    EXPECT_TRUE(subject->inqDisplayPath().isNil());
    EXPECT_TRUE(subject->inqObjPath().isNil());
    EXPECT_FALSE(subject->isPartOfMainTree());
    EXPECT_EQ(subject->readFrom(nullptr, nullptr), 0);
    EXPECT_EQ(subject->writeTo(nullptr, nullptr), 0);
    EXPECT_EQ(subject->lookupObject(), nullptr);
}

TEST(Observer, HasNoExtraParametersUntilTheyAreNeeded)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<Watcher> const watcher(new Watcher("watcher"));
    EXPECT_EQ(subject->parEx(), nullptr);
    subject->notifyChanged(nullptr);
    subject->notifyToChange(nullptr);
    EXPECT_EQ(subject->lookupNotifyInfo(ObserverInfo::Class()), nullptr);
    EXPECT_FALSE(subject->removeObserver(watcher.get()));
    EXPECT_FALSE(subject->removeNotifyInfo(nullptr, true));
    subject->removeNotifyInfos(false);
    EXPECT_EQ(subject->parEx(), nullptr);
    EXPECT_TRUE(subject->addObserver(watcher.get()));
    ASSERT_NE(subject->parEx(), nullptr);
    EXPECT_EQ(subject->parEx()->flags, 0U);
}

TEST(Observer, TheExtraParametersHoldAFlagWordAndTheTwoLists)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<Watcher> const before(new Watcher("before"));
    SmartPtr<Watcher> const after(new Watcher("after"));
    subject->addObserver(before.get(), Notice::ToChange);
    subject->addObserver(after.get(), Notice::Changed);
    EXPECT_EQ(subject->parEx()->flags, 4U);
    EXPECT_TRUE(subject->parEx()->changed.contains(after.get()));
    EXPECT_FALSE(subject->parEx()->changed.contains(before.get()));
    EXPECT_TRUE(subject->parEx()->toChange.contains(before.get()));
    EXPECT_FALSE(subject->parEx()->toChange.contains(after.get()));
}

TEST_F(Notification, TheFirstHookRunsTheSecondList)
{
    subject->addObserver(a.get(), Notice::Changed);
    subject->addObserver(b.get(), Notice::ToChange);
    subject->notifyToChange(c.get());
    EXPECT_EQ(calls, Calls{"b toChange"});
    EXPECT_EQ(b->lastSubject, subject.get());
    EXPECT_EQ(b->lastOriginator, c.get());
}

TEST_F(Notification, TheSecondHookRunsTheFirstList)
{
    subject->addObserver(a.get(), Notice::Changed);
    subject->addObserver(b.get(), Notice::ToChange);
    subject->notifyChanged(c.get());
    EXPECT_EQ(calls, Calls{"a changed"});
    EXPECT_EQ(a->lastSubject, subject.get());
    EXPECT_EQ(a->lastOriginator, c.get());
}

TEST_F(Notification, RunsInTheOrderOfJoining)
{
    subject->addObserver(b.get());
    subject->addObserver(a.get());
    subject->addObserver(c.get());
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"b changed", "a changed", "c changed"}));
}

TEST_F(Notification, AnObserverIsInAListOnce)
{
    EXPECT_TRUE(subject->addObserver(a.get()));
    EXPECT_FALSE(subject->addObserver(a.get()));
    EXPECT_FALSE(subject->addObserver(nullptr));
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls.size(), 1U);
    EXPECT_TRUE(subject->removeObserver(a.get()));
    EXPECT_FALSE(subject->removeObserver(a.get()));
    EXPECT_TRUE(a->parEx()->observed.empty());
}

TEST_F(Notification, ANullListIsNotRun)
{
    subject->addObserver(a.get());
    subject->notifySequence(nullptr, nullptr);
    EXPECT_TRUE(calls.empty());
}

TEST_F(Notification, AnObserverMayRemoveItself)
{
    for (auto* const watcher : {a.get(), b.get(), c.get()}) {
        subject->addObserver(watcher);
    }
    b->action = [&] { subject->removeObserver(b.get()); };
    subject->notifyChanged(nullptr);
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "b changed", "c changed", "a changed", "c changed"}));
    EXPECT_EQ(subject->parEx()->changed.size(), 2U);
}

TEST_F(Notification, AnObserverMayRemoveAnother)
{
    for (auto* const watcher : {a.get(), b.get(), c.get()}) {
        subject->addObserver(watcher);
    }
    b->action = [&] {
        subject->removeObserver(a.get());
        subject->removeObserver(c.get());
        EXPECT_FALSE(subject->removeObserver(nullptr));
        EXPECT_FALSE(subject->parEx()->changed.contains(nullptr));
    };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "b changed"}));
    EXPECT_EQ(subject->parEx()->changed.size(), 1U);
}

TEST_F(Notification, AnObserverAddedDuringANotificationIsNotNotifiedByIt)
{
    subject->addObserver(a.get());
    a->action = [&] {
        subject->addObserver(b.get());
        subject->addObserver(c.get());
    };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, Calls{"a changed"});
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "a changed", "b changed", "c changed"}));
}

TEST_F(Notification, ANotificationWithinANotificationSkipsNoObserverOfTheOuterOne)
{
    SmartPtr<Watcher> const d = watcher("d");
    for (auto* const watcher : {a.get(), b.get(), c.get(), d.get()}) {
        subject->addObserver(watcher);
    }
    b->action = [&] {
        b->action = nullptr;
        subject->removeObserver(a.get());
        subject->notifyChanged(nullptr);
    };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls,
              (Calls{"a changed",
                     "b changed",
                     "b changed", // the inner notification
                     "c changed",
                     "d changed",
                     "c changed",
                     "d changed"}));
}

TEST_F(Notification, AListOfTheCallersOwnNotifiesOfAChange)
{
    oV::ObserverList own;
    own.add(a.get());
    subject->addObserver(b.get(), Notice::ToChange);
    subject->notifySequence(nullptr, &own);
    EXPECT_EQ(calls, Calls{"a changed"});
}

TEST_F(Notification, AnObserverThatLeavesOneListStaysInTheOther)
{
    subject->addObserver(a.get(), Notice::Changed);
    subject->addObserver(a.get(), Notice::ToChange);
    EXPECT_TRUE(subject->removeObserver(a.get(), Notice::Changed));
    subject->notifyToChange(nullptr);
    EXPECT_EQ(calls, Calls{"a toChange"});
    a.reset();
    EXPECT_TRUE(subject->parEx()->toChange.empty());
}

TEST_F(Notification, AnObserverHasLeftTheListsWhenItIsInformedOfTheEnd)
{
    subject->addObserver(a.get());
    a->whenDeleted = [&] { EXPECT_TRUE(a->parEx()->observed.empty()); };
    subject.reset();
    EXPECT_EQ(a->deletions, 1);
}

TEST_F(Notification, AnObserverThatIsAboutToGoCannotJoin)
{
    subject->addObserver(a.get());
    Subject* const leaving = subject.get();
    a->whenDeleted = [&] { EXPECT_FALSE(b->addObserver(leaving)); };
    subject.reset();
    EXPECT_EQ(a->deletions, 1);
    EXPECT_TRUE(b->parEx()->changed.empty());
}

TEST_F(Notification, AnObserverMayLeaveAndJoinAgain)
{
    subject->addObserver(a.get());
    subject->addObserver(b.get());
    a->action = [&] {
        subject->removeObserver(a.get());
        subject->addObserver(a.get());
    };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "b changed"}));
    EXPECT_EQ(subject->parEx()->changed.size(), 2U);
    a->action = nullptr;
    calls.clear();
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"b changed", "a changed"}));
}

TEST_F(Notification, ANotificationWithinANotificationRunsInFull)
{
    subject->addObserver(a.get());
    subject->addObserver(b.get());
    a->action = [&] {
        a->action = nullptr;
        subject->removeObserver(b.get());
        subject->notifyChanged(nullptr);
    };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "a changed"}));
    EXPECT_EQ(subject->parEx()->changed.size(), 1U);
}

TEST_F(Notification, AnExceptionOfAnObserverPassesThroughAndLeavesTheListValid)
{
    for (auto* const watcher : {a.get(), b.get(), c.get()}) {
        subject->addObserver(watcher);
    }
    b->action = [&] {
        subject->removeObserver(a.get());
        throw std::runtime_error("refused");
    };
    EXPECT_THROW(subject->notifyChanged(nullptr), std::runtime_error);
    EXPECT_EQ(calls, (Calls{"a changed", "b changed"}));
    b->action = nullptr;
    calls.clear();
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"b changed", "c changed"}));
    EXPECT_TRUE(subject->addObserver(a.get()));
}

TEST_F(Notification, TheLastReferenceToTheSubjectMayGoDuringANotification)
{
    subject->addObserver(a.get());
    subject->addObserver(b.get());
    a->action = [&] { subject.reset(); };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "b changed"}));
    EXPECT_EQ(a->deletions, 1);
    EXPECT_EQ(b->deletions, 1);
}

TEST_F(Notification, AnObserverMayGoDuringItsOwnNotification)
{
    subject->addObserver(a.get());
    subject->addObserver(b.get());
    a->action = [&] {
        a.reset();
        EXPECT_EQ(subject->parEx()->changed.size(), 2U); // it is kept until it returns
    };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "b changed"}));
    EXPECT_EQ(subject->parEx()->changed.size(), 1U);
}

TEST_F(Notification, AnotherObserverMayGoDuringANotification)
{
    subject->addObserver(a.get());
    subject->addObserver(b.get());
    subject->addObserver(c.get());
    a->action = [&] { b.reset(); };
    subject->notifyChanged(nullptr);
    EXPECT_EQ(calls, (Calls{"a changed", "c changed"}));
}

TEST_F(Notification, ANodeWithoutAReferenceIsNotDestroyedByItsNotification)
{
    auto* const plain = new Subject;
    plain->addObserver(a.get());
    plain->notifyChanged(nullptr);
    EXPECT_EQ(plain->referenceCount(), 0U);
    SmartPtr<Subject> const owner(plain);
    EXPECT_EQ(calls, Calls{"a changed"});
}

TEST_F(Notification, ObserversAreNotifiedOnceWhenTheSubjectIsDestroyed)
{
    Observer* const address = subject.get();
    subject->addObserver(a.get(), Notice::Changed);
    subject->addObserver(a.get(), Notice::ToChange);
    subject->addObserver(b.get(), Notice::ToChange);
    subject.reset();
    EXPECT_EQ(a->deletions, 1);
    EXPECT_EQ(b->deletions, 1);
    EXPECT_EQ(a->lastSubject, address);
    EXPECT_TRUE(a->parEx()->observed.empty());
    EXPECT_TRUE(calls.empty());
}

TEST_F(Notification, ADestroyedObserverIsRemovedFromAllLists)
{
    SmartPtr<Subject> const second(new Subject);
    subject->addObserver(a.get(), Notice::Changed);
    subject->addObserver(a.get(), Notice::ToChange);
    second->addObserver(a.get());
    a.reset();
    EXPECT_TRUE(subject->parEx()->changed.empty());
    EXPECT_TRUE(subject->parEx()->toChange.empty());
    EXPECT_TRUE(second->parEx()->changed.empty());
    subject->notifyChanged(nullptr);
    EXPECT_TRUE(calls.empty());
}

TEST_F(Notification, ObserversMayReleaseEachOtherWhileTheSubjectIsDestroyed)
{
    subject->addObserver(a.get());
    subject->addObserver(b.get());
    subject->addObserver(c.get());
    Subject* const leaving = subject.get();
    SmartPtr<Watcher> const late = watcher("late");
    c->whenDeleted = [&] { EXPECT_FALSE(leaving->addObserver(late.get())); };
    a->whenDeleted = [&] { b.reset(); };
    subject.reset();
    EXPECT_EQ(a->deletions, 1);
    EXPECT_EQ(c->deletions, 1);
}

TEST_F(Notification, AnObserverMayObserveItself)
{
    a->addObserver(a.get());
    a->notifyChanged(nullptr);
    EXPECT_EQ(calls, Calls{"a changed"});
    a.reset();
}

TEST_F(Notification, RelationsDoNotOwnObjects)
{
    subject->addObserver(a.get());
    a->addObserver(subject.get());
    EXPECT_EQ(subject->referenceCount(), 1U);
    EXPECT_EQ(a->referenceCount(), 1U);
}

// Records

TEST(NotifyInfos, AreFoundByTheirClassTheNewestFirst)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<OtherInfo> const first(new OtherInfo);
    SmartPtr<InfoFailed> const failed(new InfoFailed);
    SmartPtr<OtherInfo> const second(new OtherInfo);
    subject->addNotifyInfo(first.get());
    EXPECT_EQ(subject->lookupNotifyInfo(InfoFailed::Class()), nullptr);
    EXPECT_EQ(subject->lookupNotifyInfo(ObserverInfo::Class()), first.get());
    subject->addNotifyInfo(failed.get());
    EXPECT_EQ(subject->lookupNotifyInfo(InfoFailed::Class()), failed.get());
    EXPECT_EQ(subject->lookupNotifyInfo(ObserverInfo::Class()), failed.get());
    subject->addNotifyInfo(second.get());
    EXPECT_EQ(subject->lookupNotifyInfo(ObserverInfo::Class()), second.get());
    EXPECT_EQ(subject->lookupNotifyInfo(Observer::Class()), nullptr);
}

TEST(NotifyInfos, HoldAReferenceUntilTheyAreRemoved)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<OtherInfo> const first(new OtherInfo);
    SmartPtr<InfoFailed> const failed(new InfoFailed);
    subject->addNotifyInfo(first.get());
    subject->addNotifyInfo(failed.get());
    subject->addNotifyInfo(nullptr);
    EXPECT_EQ(first->referenceCount(), 2U);
    EXPECT_TRUE(subject->removeNotifyInfo(first.get(), true));
    EXPECT_FALSE(subject->removeNotifyInfo(first.get(), true));
    EXPECT_EQ(first->referenceCount(), 1U);
    EXPECT_EQ(subject->lookupNotifyInfo(ObserverInfo::Class()), failed.get());
    subject->removeNotifyInfos(false);
    EXPECT_EQ(failed->referenceCount(), 1U);
    EXPECT_EQ(subject->lookupNotifyInfo(ObserverInfo::Class()), nullptr);
}

TEST(NotifyInfos, RemovingGivesTheMemoryBackOnRequest)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<OtherInfo> const info(new OtherInfo);
    subject->addNotifyInfo(info.get());
    subject->removeNotifyInfos(false);
    EXPECT_NE(subject->parEx()->infos.capacity(), 0U);
    subject->removeNotifyInfos(true);
    EXPECT_EQ(subject->parEx()->infos.capacity(), 0U);
    subject->addNotifyInfo(info.get());
    subject->removeNotifyInfo(info.get(), false);
    EXPECT_NE(subject->parEx()->infos.capacity(), 0U);
    subject->addNotifyInfo(info.get());
    subject->removeNotifyInfo(info.get(), true);
    EXPECT_EQ(subject->parEx()->infos.capacity(), 0U);
}

TEST(NotifyInfos, RemovingAllButAClassKeepsTheOrder)
{
    SmartPtr<Subject> const subject(new Subject);
    SmartPtr<InfoFailed> const first(new InfoFailed);
    SmartPtr<OtherInfo> const other(new OtherInfo);
    SmartPtr<InfoFailed> const last(new InfoFailed);
    subject->removeNotifyInfosExcept(InfoFailed::Class());
    for (ObserverInfo* const info : std::vector<ObserverInfo*>{first.get(), other.get(), last.get()}) {
        subject->addNotifyInfo(info);
    }
    subject->removeNotifyInfosExcept(InfoFailed::Class());
    ASSERT_EQ(subject->parEx()->infos.size(), 2U);
    EXPECT_EQ(subject->parEx()->infos[0], first.get());
    EXPECT_EQ(subject->parEx()->infos[1], last.get());
    EXPECT_EQ(other->referenceCount(), 1U);
}

TEST(NotifyInfos, TheRecordOfAVetoHasItsOwnClass)
{
    EXPECT_EQ(std::wstring(InfoFailed::Class()->name()), L"InfoFailed");
    EXPECT_EQ(InfoFailed::Class()->parent(), ObserverInfo::Class());
    EXPECT_EQ(std::wstring(ObserverInfo::Class()->name()), L"ObserverInfo");
    EXPECT_EQ(ObserverInfo::Class()->parent(), Bv_1_1::BaseNode::Class());
    SmartPtr<Bv_1_1::BaseNode> const made(InfoFailed::Class()->create());
    ASSERT_TRUE(made);
    EXPECT_EQ(made->getClassType(), InfoFailed::Class());
    EXPECT_EQ(SmartPtr<OtherInfo>(new OtherInfo)->getClassType(), ObserverInfo::Class());
}

} // namespace
