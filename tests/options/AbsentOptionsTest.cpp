/// @file
/// The options before the host has created them. A separate program, because they cannot be removed again.

#include "tests/support/OptionsPrivates.h"

#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>
#include <new>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsCont;
using oV::Roamscan::RoamscanOptionsJsonMerger;
using oV::Roamscan::setOption;

/// Makes the protected tables visible.
class OpenContainer : public RoamscanOptionsCont
{
public:
    using RoamscanOptionsCont::attrDefMap;
    using RoamscanOptionsCont::attrNames;
};

bool isMemoryShort = false;

} // namespace

// Replaces the allocation that gives null instead of an exception in the whole program.
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    try {
        return isMemoryShort ? nullptr : ::operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

TEST(LoadedLibrary, HasItsClassRecordsAndIsAttached)
{
    // Asked of the module first: Class() would make a record that is missing.
    std::vector<std::wstring> names;
    for (Bv_1_1::oVClass const* const record : Bv_1_1::Module::library().classes()) {
        names.emplace_back(record->name());
    }
    auto const options = std::find(names.begin(), names.end(), L"RoamscanOptions");
    auto const container = std::find(names.begin(), names.end(), L"RoamscanOptionsCont");
    ASSERT_NE(options, names.end());
    ASSERT_NE(container, names.end());
    EXPECT_LT(options, container); // entered first
    EXPECT_TRUE(Bv_1_1::Module::library().isAttached());
}

TEST(LoadedLibrary, HasTheTablesOfTheContainer)
{
    EXPECT_NE(OpenContainer::attrNames, nullptr);
    EXPECT_NE(OpenContainer::attrDefMap, nullptr);
}

TEST(LoadedLibrary, TheRecordOfTheContainerSetsItsTablesUpAndClearsThem)
{
    auto* const record = const_cast<Bv_1_1::oVClass*>(RoamscanOptionsCont::Class());
    record->clearClassStatics();
    EXPECT_EQ(OpenContainer::attrNames, nullptr);
    EXPECT_EQ(OpenContainer::attrDefMap, nullptr);
    record->initClassStatics();
    EXPECT_NE(OpenContainer::attrNames, nullptr);
    EXPECT_NE(OpenContainer::attrDefMap, nullptr);
}

TEST(AbsentOptions, AreNotAvailable)
{
    EXPECT_FALSE(support::areOptionsAvailable());
    EXPECT_FALSE(support::theOptions());
    EXPECT_EQ(support::optionsLock().holdCount(), 0U);
}

TEST(AbsentOptions, AReadGivesTheFallbackAndCreatesNothing)
{
    bool isWeak = false;
    EXPECT_TRUE(getOption<bool>(L"ShowDebug2DWindow", true, false, nullptr));
    EXPECT_EQ(getOption<int>(L"X", 5, true, &isWeak), 5);
    EXPECT_FALSE(isWeak); // not touched
    isWeak = true;
    EXPECT_EQ(getOption<double>(L"X", 0.5, false, &isWeak), 0.5);
    EXPECT_TRUE(isWeak);
    EXPECT_EQ(getOption<String>(L"X", L"text"), String(L"text"));
}

TEST(AbsentOptions, AWriteGivesTheValueAndCreatesNothing)
{
    EXPECT_EQ(setOption<int>(L"X", 5), 5);
    EXPECT_EQ(getOption<int>(L"X", 6), 6);
}

TEST(AbsentOptions, GetOptsGivesNothingAlsoUnderTheLock)
{
    EXPECT_FALSE(RoamscanOptions::getOpts());
    auto const access = RoamscanOptions::getLock();
    EXPECT_TRUE(access->held());
    EXPECT_FALSE(RoamscanOptions::getOpts());
}

TEST(AbsentOptions, GetLockGivesNothingAndTakesNoLockWithoutMemory)
{
    isMemoryShort = true;
    auto const access = RoamscanOptions::getLock();
    isMemoryShort = false;
    EXPECT_EQ(access, nullptr);
    EXPECT_EQ(support::optionsLock().holdCount(), 0U);
}

TEST(AbsentOptions, CleanUpDoesNothing)
{
    RoamscanOptions::cleanUp();
    EXPECT_FALSE(getOption<bool>(L"Calculate3DTrajectory", false));
}

TEST(AbsentOptions, TheMergerWritesTheDefault)
{
    RoamscanOptionsJsonMerger merger(L"P", nlohmann::json());
    merger[{"a"}] = 5;
    merger[{"a"}] = 6;
    EXPECT_EQ(merger.get(), nlohmann::json::parse(R"({"a":6})"));
}

TEST(NullContainer, ReadsGiveTheFallbackAndCleanUpIsHarmless)
{
    // Last, because the options exist from here on, without a container.
    std::atomic<bool> isUp = false;
    auto reader = std::async(std::launch::async, [&isUp] {
        while (!isUp) {
            EXPECT_EQ(getOption<int>(L"X", 5),
                      5); // ThreadSanitizer reports a setup that does not take the lock
        }
    });
    oV::Roamscan::RoamscanOptionsHost::setup(nullptr);
    isUp = true;
    reader.get();
    EXPECT_TRUE(support::areOptionsAvailable()); // the singleton, which has no container
    EXPECT_EQ(getOption<int>(L"X", 5), 5);
    EXPECT_EQ(setOption<int>(L"X", 6), 6);
    RoamscanOptions::cleanUp();
    auto const access = RoamscanOptions::getLock();
    EXPECT_FALSE(RoamscanOptions::getOpts());
}
