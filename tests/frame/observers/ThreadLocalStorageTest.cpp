#include <roamscan/frame/observers/BlockObserving.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

#include <gtest/gtest.h>

#include <thread>

namespace
{

using oV::BlockObserving;
using oV::ThreadLocalStorage;

TEST(ThreadLocalStorage, AThreadHasNoDataUntilItNeedsSome)
{
    std::thread([] {
        EXPECT_EQ(ThreadLocalStorage::the().getData(), nullptr);
        oV::ThreadDataType& made = ThreadLocalStorage::the().makeData();
        EXPECT_EQ(ThreadLocalStorage::the().getData(), &made);
        EXPECT_EQ(&ThreadLocalStorage::the().makeData(), &made);
        EXPECT_EQ(made.cachedPathCount, 0U);
        EXPECT_EQ(made.attributeInBlock, 0U);
        EXPECT_FALSE(made.cachedAttributePending);
        EXPECT_EQ(made.observingBlocks, 0U);
        EXPECT_EQ(made.srcToCopyTable, nullptr);
    }).join();
}

TEST(ThreadLocalStorage, ThreadsDoNotShareTheirData)
{
    ThreadLocalStorage::the().makeData().cachedPathCount = 7;
    std::thread([] { EXPECT_EQ(ThreadLocalStorage::the().makeData().cachedPathCount, 0U); }).join();
    EXPECT_EQ(ThreadLocalStorage::the().getData()->cachedPathCount, 7U);
    ThreadLocalStorage::the().getData()->cachedPathCount = 0;
}

TEST(ThreadLocalStorage, BlockObservingScopesNest)
{
    auto const& data = ThreadLocalStorage::the().makeData();
    {
        BlockObserving const outer;
        EXPECT_EQ(data.observingBlocks, 1U);
        {
            BlockObserving const inner;
            EXPECT_EQ(data.observingBlocks, 2U);
        }
        EXPECT_EQ(data.observingBlocks, 1U);
    }
    EXPECT_EQ(data.observingBlocks, 0U);
}

} // namespace
