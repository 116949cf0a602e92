/// @file
/// Which operations hold the locks of the options, and that they leave them as they were.

#include "tests/support/LiveOptions.h"
#include "tests/support/OptionsPrivates.h"

#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/options/RoamscanOptionAccess.h>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Observer;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::setOption;
using support::liveOptions;
using support::madeOptionsContainer;
using support::optionsLock;
using Strings = std::vector<String>;

class OptionsLockTest : public support::LiveOptionsTest
{};

/// Calls a function when what it observes has changed, and when that is destroyed.
class Watcher : public Observer
{
public:
    std::function<void()> changed = [] {};
    std::function<void()> destroyed = [] {};

    void changedNotify(Observer* /*subject*/, Observer* /*originator*/) override { changed(); }
    void informDelete(Observer* subject) noexcept override
    {
        destroyed();
        Observer::informDelete(subject);
    }
};

SmartPtr<Watcher> watcherOf(wchar_t const* name)
{
    SmartPtr<Watcher> watcher(new Watcher());
    auto const options = liveOptions();
    options->getAttribute(options->getAttrToken(name))->addObserver(watcher.get());
    return watcher;
}

constexpr auto moment = std::chrono::milliseconds(100);

} // namespace

TEST_F(OptionsLockTest, EveryOperationLeavesTheLockAsItWas)
{
    EXPECT_EQ(optionsLock().holdCount(), 0U);
    (void)getOption<int>(L"X", 5);
    (void)getOption<int>(L"X", 5);
    EXPECT_EQ(optionsLock().holdCount(), 0U);
    setOption<int>(L"X", 6);
    EXPECT_EQ(optionsLock().holdCount(), 0U);
    (void)RoamscanOptions::getOpts();
    EXPECT_EQ(optionsLock().holdCount(), 0U);
    (void)support::theOptions();
    EXPECT_TRUE(support::areOptionsAvailable());
    EXPECT_EQ(optionsLock().holdCount(), 0U);
    RoamscanOptions::cleanUp();
    EXPECT_EQ(optionsLock().holdCount(), 0U);
    EXPECT_THROW(oV::Roamscan::RoamscanOptionsHost::setup(nullptr), oV::InternalErrorException);
    EXPECT_EQ(optionsLock().holdCount(), 0U);
}

TEST_F(OptionsLockTest, GetOptsLeavesTheHoldsOfItsThread)
{
    auto const outer = RoamscanOptions::getLock();
    EXPECT_EQ(optionsLock().holdCount(), 1U);
    EXPECT_TRUE(RoamscanOptions::getOpts());
    EXPECT_EQ(optionsLock().holdCount(), 1U);
    auto const inner = RoamscanOptions::getLock();
    EXPECT_TRUE(RoamscanOptions::getOpts());
    EXPECT_EQ(optionsLock().holdCount(), 2U);
}

TEST_F(OptionsLockTest, ObserversOfAChangeRunUnderTheLock)
{
    setOption<int>(L"X", 1);
    auto const watcher = watcherOf(L"X");
    bool gotContainer = false;
    watcher->changed = [&gotContainer] { gotContainer = static_cast<bool>(RoamscanOptions::getOpts()); };
    setOption<int>(L"X", 2);
    EXPECT_TRUE(gotContainer);
}

TEST_F(OptionsLockTest, CleanUpRemovesTheOptionsUnderTheLock)
{
    setOption<int>(L"X", 1);
    auto const watcher = watcherOf(L"X");
    bool gotContainer = false;
    watcher->destroyed = [&gotContainer] { gotContainer = static_cast<bool>(RoamscanOptions::getOpts()); };
    RoamscanOptions::cleanUp();
    EXPECT_TRUE(gotContainer);
}

TEST_F(OptionsLockTest, EveryOperationWaitsForTheThreadThatHoldsTheLock)
{
    std::vector<std::function<void()>> const operations{[] { (void)getOption<int>(L"X", 5); },
                                                        [] { setOption<int>(L"X", 5); },
                                                        [] { RoamscanOptions::cleanUp(); },
                                                        [] { (void)RoamscanOptions::getLock(); },
                                                        [] { (void)support::theOptions(); },
                                                        [] { (void)support::areOptionsAvailable(); }};
    std::vector<std::future<void>> results;
    auto access = RoamscanOptions::getLock();
    results.reserve(operations.size());
    for (auto const& operation : operations) {
        results.push_back(std::async(std::launch::async, operation));
    }
    for (std::size_t i = 0; i < results.size(); ++i) {
        EXPECT_EQ(results[i].wait_for(moment / 5), std::future_status::timeout) << i;
    }
    access.reset();
    for (auto& result : results) {
        result.get();
    }
    EXPECT_EQ(optionsLock().holdCount(), 0U);
}

TEST_F(OptionsLockTest, AWriteOfAListWaitsForTheWriteOfAnotherContainersList)
{
    auto const first = madeOptionsContainer();
    auto const second = madeOptionsContainer();
    SmartPtr<Watcher> const watcher(new Watcher());
    std::future<void> other;
    auto status = std::future_status::ready;
    watcher->changed = [&] {
        other = std::async(std::launch::async, [&second] { second->OptionsTypes(Strings{L"Attr<int>"}); });
        status = other.wait_for(moment);
    };
    first->getAttribute(1)->addObserver(watcher.get());
    first->OptionsNames(Strings{L"X"});
    EXPECT_EQ(status, std::future_status::timeout);
    other.get();
    EXPECT_EQ(second->OptionsTypes(), Strings{L"Attr<int>"});
}

TEST_F(OptionsLockTest, UpdateToCurrentOptionsWritesTheNamesFirst)
{
    auto const options = liveOptions();
    SmartPtr<Watcher> const watcher(new Watcher());
    Strings namesThen;
    Strings typesThen{L"not called"};
    watcher->changed = [&] {
        namesThen = options->OptionsNames();
        typesThen = options->OptionsTypes();
    };
    options->getAttribute(1)->addObserver(watcher.get());
    options->updateToCurrentOptions();
    EXPECT_EQ(namesThen.size(), 2U);
    EXPECT_TRUE(typesThen.empty()); // the lists disagree in between
    EXPECT_EQ(options->OptionsTypes().size(), 2U);
}

TEST_F(OptionsLockTest, CopiesAndMovesOfTheSingletonShareTheContainer)
{
    auto const container = liveOptions();
    auto const before = container->referenceCount();
    SmartPtr<RoamscanOptions> const singleton = support::theOptions();
    ASSERT_TRUE(singleton);
    EXPECT_EQ(singleton->getClassType(), RoamscanOptions::Class());
    {
        SmartPtr<RoamscanOptions> const copy(new RoamscanOptions(*singleton));
        EXPECT_EQ(container->referenceCount(), before + 1);
        SmartPtr<RoamscanOptions> const moved(new RoamscanOptions(std::move(*copy)));
        EXPECT_EQ(container->referenceCount(), before + 2); // the source keeps its container
        EXPECT_EQ(support::theOptions(), singleton);        // neither becomes the singleton
    }
    EXPECT_EQ(container->referenceCount(), before);
}
