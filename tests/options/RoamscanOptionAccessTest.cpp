#include "tests/support/LiveOptions.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/observers/InfoFailed.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptionsCont.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Attribute;
using oV::Observer;
using oV::Roamscan::getOption;
using oV::Roamscan::setOption;
using support::liveOptions;
using support::optionCount;

class OptionAccessTest : public support::LiveOptionsTest
{};

template <typename T>
struct Values;
template <>
struct Values<bool>
{
    static bool first() { return true; }
    static bool second() { return false; }
};
template <>
struct Values<int>
{
    static int first() { return 5; }
    static int second() { return std::numeric_limits<int>::min(); }
};
template <>
struct Values<double>
{
    static double first() { return 0.1; }
    static double second() { return -1e300; }
};
template <>
struct Values<String>
{
    static String first() { return L"one"; }
    static String second() { return L"two\n\"quoted\""; }
};

template <typename T>
class OptionOfEachType : public support::LiveOptionsTest
{};
using OptionTypes = testing::Types<bool, int, double, String>;
TYPED_TEST_SUITE(OptionOfEachType, OptionTypes);

/// Calls a function before and after its subject changes.
class ChangingObserver : public Observer
{
public:
    std::function<void()> changed = [] {};
    std::function<void(Observer&)> toChange = [](Observer&) {};

    void changedNotify(Observer* /*subject*/, Observer* /*originator*/) override { changed(); }
    void toChangeNotify(Observer* subject, Observer* /*originator*/) override { toChange(*subject); }
};

Attribute* attributeOf(wchar_t const* name)
{
    auto const options = liveOptions();
    return options->getAttribute(options->getAttrToken(name));
}

} // namespace

TYPED_TEST(OptionOfEachType, IsCreatedWithTheFallback)
{
    using T = TypeParam;
    bool isWeak = false;
    EXPECT_EQ(getOption<T>(L"X", Values<T>::first(), false, &isWeak), Values<T>::first());
    EXPECT_TRUE(isWeak); // a new option, although it has no mark
    EXPECT_EQ(getOption<T>(L"X", Values<T>::second(), false, &isWeak), Values<T>::first());
    EXPECT_FALSE(isWeak);
    ASSERT_NE(attributeOf(L"X"), nullptr);
    EXPECT_EQ(attributeOf(L"X")->getClassType(), oV::Attr<T>::Class());
}

TYPED_TEST(OptionOfEachType, KeepsTheWeakValueMarkItWasCreatedWith)
{
    using T = TypeParam;
    bool isWeak = false;
    EXPECT_EQ(getOption<T>(L"X", Values<T>::first(), true, &isWeak), Values<T>::first());
    EXPECT_TRUE(isWeak);
    isWeak = false;
    EXPECT_EQ(getOption<T>(L"X", Values<T>::second(), false, &isWeak), Values<T>::first());
    EXPECT_TRUE(isWeak);
    EXPECT_EQ(setOption<T>(L"X", Values<T>::second()), Values<T>::second());
    isWeak = false;
    EXPECT_EQ(getOption<T>(L"X", Values<T>::first(), false, &isWeak), Values<T>::second());
    EXPECT_TRUE(isWeak);
}

TYPED_TEST(OptionOfEachType, IsSetAndCreatedWithoutTheMark)
{
    using T = TypeParam;
    EXPECT_EQ(setOption<T>(L"X", Values<T>::first()), Values<T>::first());
    bool isWeak = true;
    EXPECT_EQ(getOption<T>(L"X", Values<T>::second(), true, &isWeak), Values<T>::first());
    EXPECT_FALSE(isWeak);
    EXPECT_EQ(setOption<T>(L"X", Values<T>::second()), Values<T>::second());
    EXPECT_EQ(optionCount(), 3U);
}

TEST_F(OptionAccessTest, TheMarkIsBit8OfTheFlagWord)
{
    (void)getOption<int>(L"weak", 1, true);
    (void)getOption<int>(L"strong", 1, false);
    EXPECT_EQ(attributeOf(L"weak")->flags() & 8U, 8U);
    EXPECT_EQ(attributeOf(L"strong")->flags() & 8U, 0U);
}

TEST_F(OptionAccessTest, NamesMayBeAnyText)
{
    int value = 0;
    for (String const& name : {String(L"a.b.c"),
                               String::EMPTY,
                               String(L" "),
                               String(L"line\nbreak"),
                               String(L"OptionsNames2"),
                               String(L"\U0001F4F7")})
    {
        ++value;
        EXPECT_EQ(setOption<int>(name, value), value);
        EXPECT_EQ(getOption<int>(name, 0), value);
    }
}

TEST_F(OptionAccessTest, DoublesKeepEveryBit)
{
    for (double const value :
         {-0.0, std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::infinity()})
    {
        setOption<double>(L"X", value);
        EXPECT_EQ(getOption<double>(L"X", 1.0), value);
        EXPECT_EQ(std::signbit(getOption<double>(L"X", 1.0)), std::signbit(value));
    }
    setOption<double>(L"X", std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(getOption<double>(L"X", 1.0)));
}

TEST_F(OptionAccessTest, ANullStringIsAValueOfItsOwn)
{
    EXPECT_TRUE(setOption<String>(L"X", String::NIL).isNil());
    EXPECT_TRUE(getOption<String>(L"X", String::EMPTY).isNil());
}

TEST_F(OptionAccessTest, AnOptionOfAnotherTypeCountsAsAbsent)
{
    setOption<double>(L"X", 1.5);
    bool isWeak = false;
    EXPECT_EQ(getOption<int>(L"X", 7, false, &isWeak), 7);
    EXPECT_TRUE(isWeak);
    EXPECT_EQ(getOption<double>(L"X", 0.0), 1.5);
    EXPECT_EQ(optionCount(), 4U); // the library's two, and one of each type
}

TEST_F(OptionAccessTest, AskingForAnotherTypeOverAndOverDoesNotFillTheContainer)
{
    setOption<double>(L"X", 1.5);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(getOption<int>(L"X", 7), 7);
    }
    EXPECT_EQ(optionCount(), 4U);
}

TEST_F(OptionAccessTest, SettingAnOptionOfAnotherTypeGivesItsValueAsText)
{
    setOption<double>(L"X", 1.5);
    EXPECT_EQ(setOption<int>(L"X", 7), 7);
    EXPECT_EQ(getOption<double>(L"X", 0.0), 7.0);
    setOption<String>(L"X", L"no number");
    EXPECT_EQ(getOption<double>(L"X", 0.0), 7.0); // text that is no number leaves it
}

TEST_F(OptionAccessTest, AStaticAttributeIsNoOption)
{
    bool isWeak = false;
    EXPECT_EQ(getOption<int>(L"OptionsNames", 3, false, &isWeak), 3);
    EXPECT_TRUE(isWeak);
    EXPECT_TRUE(liveOptions()->OptionsNames().empty());
}

TEST_F(OptionAccessTest, ObserversMayRefuseAValue)
{
    setOption<int>(L"X", 1);
    SmartPtr<ChangingObserver> const watcher(new ChangingObserver());
    watcher->toChange = [](Observer& subject) { subject.addNotifyInfo(new oV::InfoFailed()); };
    attributeOf(L"X")->addObserver(watcher.get(), Observer::Notice::ToChange);
    EXPECT_EQ(setOption<int>(L"X", 2), 1);
    EXPECT_EQ(getOption<int>(L"X", 0), 1);
}

TEST_F(OptionAccessTest, ObserversMayReadAndWriteOptionsDuringAChange)
{
    setOption<int>(L"X", 1);
    SmartPtr<ChangingObserver> const watcher(new ChangingObserver());
    int seen = 0;
    watcher->changed = [&seen] {
        seen = getOption<int>(L"X", 0);
        setOption<int>(L"Seen", seen);
    };
    attributeOf(L"X")->addObserver(watcher.get());
    setOption<int>(L"X", 2);
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(getOption<int>(L"Seen", 0), 2);
}

TEST_F(OptionAccessTest, AnObserverThatThrowsLeavesTheLockFree)
{
    setOption<int>(L"X", 1);
    SmartPtr<ChangingObserver> const watcher(new ChangingObserver());
    watcher->changed = [] { throw std::runtime_error("observer"); };
    attributeOf(L"X")->addObserver(watcher.get());
    EXPECT_THROW(setOption<int>(L"X", 2), std::runtime_error);
    EXPECT_FALSE(oV::Roamscan::RoamscanOptions::getOpts()); // not held by this thread any more
    EXPECT_EQ(getOption<int>(L"X", 0), 2);
}

TEST_F(OptionAccessTest, WhatAContainerAnswersForANameCountsOnlyIfItIsAnAttribute)
{
    class Answering : public oV::Roamscan::RoamscanOptionsCont
    {
    public:
        Answering() : RoamscanOptionsCont(CreateType::Fresh, nullptr) {}

        SmartPtr<Observer> answer;

        [[nodiscard]] Observer* inqObserver(String const& /*name*/) override { return answer.get(); }
    };
    SmartPtr<Answering> const options(new Answering());
    EXPECT_EQ(oV::Roamscan::detail::findOption(*options, L"X"), nullptr);
    options->answer = SmartPtr<Observer>(new ChangingObserver());
    EXPECT_EQ(oV::Roamscan::detail::findOption(*options, L"X"), nullptr);
    SmartPtr<Attribute> const attribute(new oV::CustAttr<int>(Bv_1_1::BaseNode::CreateType::Fresh, nullptr));
    options->answer = SmartPtr<Observer>(attribute.get());
    EXPECT_EQ(oV::Roamscan::detail::findOption(*options, L"X"), attribute.get());
    auto* const byToken = new oV::CustAttr<int>(Bv_1_1::BaseNode::CreateType::Fresh, nullptr);
    EXPECT_TRUE(options->addAttribute(byToken, L"X"));
    EXPECT_EQ(oV::Roamscan::detail::findOption(*options, L"X"), byToken); // the token comes first
}
