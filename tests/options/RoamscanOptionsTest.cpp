#include "tests/support/LiveOptions.h"

#include <roamscan/frame/bvbase/CriticalSection.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsHost.h>

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <thread>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsCont;
using oV::Roamscan::RoamscanOptionsHost;
using oV::Roamscan::setOption;
using support::liveOptions;
using support::madeOptionsContainer;

class RoamscanOptionsTest : public support::LiveOptionsTest
{};

/// The result of `work` on another thread.
template <typename Work>
auto onAnotherThread(Work const& work)
{
    return std::async(std::launch::async, work).get();
}

/// Whether another thread can enter the lock now.
bool lockIsFree()
{
    return onAnotherThread([] { return RoamscanOptions::getLock()->held(); });
}

} // namespace

TEST_F(RoamscanOptionsTest, HasItsClassRecord)
{
    Bv_1_1::oVClass const* const record = RoamscanOptions::Class();
    EXPECT_EQ(std::wstring(record->name()), L"RoamscanOptions");
    EXPECT_EQ(record->parent(), Bv_1_1::BaseNode::Class());
    EXPECT_EQ(record->version().number, 0U);
    EXPECT_EQ(record->create(), nullptr);
}

TEST_F(RoamscanOptionsTest, GetOptsGivesTheContainerUnderTheLock)
{
    auto const access = RoamscanOptions::getLock();
    ASSERT_TRUE(access);
    EXPECT_TRUE(access->held());
    EXPECT_TRUE(RoamscanOptions::getOpts());
    EXPECT_EQ(RoamscanOptions::getOpts(), RoamscanOptions::getOpts());
}

TEST_F(RoamscanOptionsTest, GetOptsGivesNothingWithoutTheLock)
{
    EXPECT_FALSE(RoamscanOptions::getOpts());
}

TEST_F(RoamscanOptionsTest, GetOptsLeavesTheHoldsAsTheyWere)
{
    auto access = RoamscanOptions::getLock();
    (void)RoamscanOptions::getOpts();
    access.reset();
    EXPECT_FALSE(RoamscanOptions::getOpts());
    EXPECT_TRUE(lockIsFree());
}

TEST_F(RoamscanOptionsTest, GetOptsDoesNotBlockWhileAnotherThreadHoldsTheLock)
{
    auto const access = RoamscanOptions::getLock();
    bool const gotNothing = onAnotherThread([] { return !RoamscanOptions::getOpts(); });
    EXPECT_TRUE(gotNothing);
}

TEST_F(RoamscanOptionsTest, TheLockIsRecursive)
{
    auto const outer = RoamscanOptions::getLock();
    auto inner = RoamscanOptions::getLock();
    EXPECT_TRUE(RoamscanOptions::getOpts());
    inner.reset();
    EXPECT_TRUE(RoamscanOptions::getOpts());
}

TEST_F(RoamscanOptionsTest, ASecondSetupThrowsAndLeavesTheFirstInPlace)
{
    auto const first = liveOptions();
    auto const second = madeOptionsContainer();
    try {
        RoamscanOptionsHost::setup(second.get());
        ADD_FAILURE() << "no failure";
    } catch (oV::InternalErrorException const& failure) {
        EXPECT_EQ(failure.getDesc(), String(L"RoamscanOptions singleton already exists."));
        EXPECT_EQ(failure.getFunction(), String(L"oV::Roamscan::RoamscanOptions::RoamscanOptions"));
    }
    EXPECT_EQ(liveOptions(), first);
    EXPECT_TRUE(lockIsFree());
    EXPECT_EQ(second->referenceCount(), 1U); // the reference of the failed attempt is dropped
}

TEST_F(RoamscanOptionsTest, AFailedSetupDestroysAContainerWithoutOtherReferences)
{
    class Counted : public RoamscanOptionsCont
    {
    public:
        explicit Counted(int& living) : RoamscanOptionsCont(CreateType::Fresh, nullptr), living_(living)
        {
            ++living_;
        }
        Counted(Counted const&) = delete;
        Counted& operator=(Counted const&) = delete;

    protected:
        ~Counted() override { --living_; }

    private:
        int& living_;
    };
    int living = 0;
    EXPECT_THROW(RoamscanOptionsHost::setup(new Counted(living)), oV::InternalErrorException);
    EXPECT_EQ(living, 0);
}

TEST_F(RoamscanOptionsTest, CleanUpLeavesTheTwoOptionsOfTheLibrary)
{
    setOption<int>(L"Other", 5);
    setOption<bool>(L"Calculate3DTrajectory", false);
    RoamscanOptions::cleanUp();
    auto const options = liveOptions();
    unsigned int const statics = options->getNumStaticAttributes();
    EXPECT_EQ(options->getNumAttributes(), statics + 2);
    EXPECT_EQ(options->getAttrName(statics), String(L"Calculate3DTrajectory"));
    EXPECT_EQ(options->getAttrName(statics + 1), String(L"ShowDebug2DWindow"));
    bool isWeak = true;
    EXPECT_TRUE(getOption<bool>(L"Calculate3DTrajectory", false, false, &isWeak));
    EXPECT_FALSE(isWeak);
    EXPECT_FALSE(getOption<bool>(L"ShowDebug2DWindow", true, false, &isWeak));
    EXPECT_FALSE(isWeak);
}

TEST_F(RoamscanOptionsTest, CleanUpLeavesBothListsEmptyWhileTheTwoOptionsExist)
{
    setOption<int>(L"Other", 5);
    liveOptions()->updateToCurrentOptions();
    EXPECT_EQ(liveOptions()->OptionsNames().size(), 3U);
    RoamscanOptions::cleanUp();
    EXPECT_TRUE(liveOptions()->OptionsNames().empty());
    EXPECT_TRUE(liveOptions()->OptionsTypes().empty());
    liveOptions()->updateToCurrentOptions();
    EXPECT_EQ(liveOptions()->OptionsNames().size(), 2U);
}

TEST_F(RoamscanOptionsTest, AfterCleanUpAFormerOptionIsCreatedAnewWithTheFallback)
{
    setOption<int>(L"Other", 5);
    RoamscanOptions::cleanUp();
    bool isWeak = false;
    EXPECT_EQ(getOption<int>(L"Other", 8, false, &isWeak), 8);
    EXPECT_TRUE(isWeak);
}

TEST_F(RoamscanOptionsTest, CanBeCopiedAndMovedButNotAssigned)
{
    // Plug-ins cannot create instances, but the host may copy and move its own.
    static_assert(std::is_copy_constructible_v<RoamscanOptions>);
    static_assert(std::is_nothrow_move_constructible_v<RoamscanOptions>);
    static_assert(!std::is_copy_assignable_v<RoamscanOptions>);
}

TEST_F(RoamscanOptionsTest, InitStaticsAndClearStaticsDoNothing)
{
    RoamscanOptions::clearStatics();
    RoamscanOptions::initStatics();
    EXPECT_TRUE(liveOptions());
}
