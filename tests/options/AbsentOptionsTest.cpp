/// @file
/// The options before the host has created them. A separate program, because they cannot be removed again.

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsHost.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsJsonMerger;
using oV::Roamscan::setOption;

} // namespace

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
    oV::Roamscan::RoamscanOptionsHost::setup(nullptr);
    EXPECT_EQ(getOption<int>(L"X", 5), 5);
    EXPECT_EQ(setOption<int>(L"X", 6), 6);
    RoamscanOptions::cleanUp();
    auto const access = RoamscanOptions::getLock();
    EXPECT_FALSE(RoamscanOptions::getOpts());
}
