#include "tests/support/LiveOptions.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::setOption;

class OptionsConcurrencyTest : public support::LiveOptionsTest
{};

void runAtOnce(std::vector<std::function<void()>> const& works)
{
    std::vector<std::thread> threads;
    threads.reserve(works.size());
    for (auto const& work : works) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

String numberedName(int number)
{
    String name(L"option ");
    name << number;
    return name;
}

} // namespace

TEST_F(OptionsConcurrencyTest, ThreadsThatReadWriteLockAndAskForTheContainerAgree)
{
    constexpr int rounds = 300;
    std::atomic<int> wrong = 0;
    auto const writer = [&wrong](int first) {
        return [&wrong, first] {
            for (int i = 0; i < rounds; ++i) {
                String const name = numberedName(first + i % 50);
                if (setOption<int>(name, first + i) < 0) {
                    ++wrong;
                }
            }
        };
    };
    auto const reader = [&wrong] {
        for (int i = 0; i < rounds; ++i) {
            if (getOption<int>(numberedName(i % 100), 0) < 0) {
                ++wrong;
            }
        }
    };
    auto const holder = [&wrong] {
        for (int i = 0; i < rounds; ++i) {
            auto const access = RoamscanOptions::getLock();
            auto const options = RoamscanOptions::getOpts();
            if (!options) {
                ++wrong;
                continue;
            }
            int const value = getOption<int>(L"held", 0);
            if (setOption<int>(L"held", value + 1) != value + 1) {
                ++wrong; // nobody else may have written in between
            }
            options->updateToCurrentOptions();
            if (options->OptionsNames().size() != options->OptionsTypes().size()) {
                ++wrong;
            }
        }
    };
    auto const asker = [&wrong] {
        for (int i = 0; i < rounds; ++i) {
            if (RoamscanOptions::getOpts()) {
                ++wrong; // this thread never holds the lock
            }
        }
    };
    runAtOnce({writer(0), writer(50), reader, holder, holder, asker});
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(getOption<int>(L"held", 0), 2 * rounds);
}

TEST_F(OptionsConcurrencyTest, AnOptionThatManyThreadsAskForFirstIsCreatedOnce)
{
    auto const ask = [] { (void)getOption<String>(L"first", L"text", true); };
    runAtOnce({ask, ask, ask, ask});
    auto const options = support::liveOptions();
    EXPECT_EQ(options->getNumAttributes() - options->getNumStaticAttributes(), 3U);
}
