#include <roamscan/frame/bvbase/CriticalSection.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <optional>
#include <thread>
#include <vector>

namespace
{

using Bv_1_1::CriticalSection;
using Access = CriticalSection::Access;

bool otherThreadCanEnter(CriticalSection& lock)
{
    bool entered = false;
    std::thread([&] {
        entered = lock.tryEnter();
        if (entered) {
            lock.leave();
        }
    }).join();
    return entered;
}

// Reads and writes the 32-bit words of a guard after its pointer to the lock.
std::uint32_t word(Access const& access, std::size_t index)
{
    std::uint32_t value = 0;
    std::memcpy(&value, reinterpret_cast<char const*>(&access) + sizeof(void*) + index * 4, sizeof value);
    return value;
}

void setWord(Access& access, std::size_t index, std::uint32_t value)
{
    std::memcpy(reinterpret_cast<char*>(&access) + sizeof(void*) + index * 4, &value, sizeof value);
}

constexpr std::size_t mode = 0;
constexpr std::size_t heldFlag = 1;

TEST(CriticalSection, IsInitiallyNotHeld)
{
    CriticalSection lock;
    EXPECT_EQ(lock.holdCount(), 0U);
    EXPECT_TRUE(otherThreadCanEnter(lock));
    CriticalSection withSpinCount(4000);
    EXPECT_TRUE(otherThreadCanEnter(withSpinCount));
}

TEST(CriticalSection, BlocksOtherThreads)
{
    CriticalSection lock;
    lock.enter();
    EXPECT_FALSE(otherThreadCanEnter(lock));
    EXPECT_EQ(lock.holdCount(), 1U); // the failed attempt of the other thread is not counted
    lock.leave();
    EXPECT_TRUE(otherThreadCanEnter(lock));
}

TEST(CriticalSection, CountsItsHolds)
{
    CriticalSection lock;
    lock.enter();
    EXPECT_EQ(lock.holdCount(), 1U);
    lock.enter();
    EXPECT_EQ(lock.holdCount(), 2U);
    ASSERT_TRUE(lock.tryEnter());
    EXPECT_EQ(lock.holdCount(), 3U);
    lock.leave();
    lock.leave();
    EXPECT_EQ(lock.holdCount(), 1U);
    EXPECT_FALSE(otherThreadCanEnter(lock));
    lock.leave();
    EXPECT_EQ(lock.holdCount(), 0U);
    EXPECT_TRUE(otherThreadCanEnter(lock));
}

TEST(CriticalSection, TheCountShowsWhetherAThreadHeldTheLockBefore)
{
    CriticalSection lock;
    ASSERT_TRUE(lock.tryEnter());
    EXPECT_EQ(lock.holdCount(), 1U);
    ASSERT_TRUE(lock.tryEnter());
    EXPECT_GT(lock.holdCount(), 1U);
    lock.leave();
    lock.leave();
}

TEST(CriticalSection, ProvidesMutualExclusion)
{
    CriticalSection lock;
    int total = 0;
    std::atomic<bool> finished = false;
    std::thread reader([&] {
        while (!finished) {
            EXPECT_LE(lock.holdCount(), 2U);
            std::this_thread::yield();
        }
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 5000; ++round) {
                Access const outer(lock);
                Access const inner(lock);
                ++total;
                EXPECT_EQ(lock.holdCount(), 2U);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    finished = true;
    reader.join();
    EXPECT_EQ(total, 20000);
    EXPECT_EQ(lock.holdCount(), 0U);
}

TEST(CriticalSectionAccess, HoldsTheLockForItsScope)
{
    CriticalSection lock;
    {
        Access const access(lock);
        EXPECT_TRUE(access.held());
        EXPECT_EQ(lock.holdCount(), 1U);
        EXPECT_FALSE(otherThreadCanEnter(lock));
    }
    EXPECT_EQ(lock.holdCount(), 0U);
    EXPECT_TRUE(otherThreadCanEnter(lock));
}

TEST(CriticalSectionAccess, ConsistsOfThePointerTheModeAndTheFlag)
{
    CriticalSection lock;
    Access const access(lock);
    EXPECT_EQ(sizeof(Access), sizeof(void*) + 8);
    CriticalSection* pointer = nullptr;
    std::memcpy(&pointer, reinterpret_cast<char const*>(&access), sizeof(void*));
    EXPECT_EQ(pointer, &lock);
    EXPECT_EQ(word(access, mode), 1U);
    EXPECT_EQ(word(access, heldFlag), 1U);
}

TEST(CriticalSectionAccess, LeavingEarlyClearsTheFlagAndLeavesOnce)
{
    CriticalSection lock;
    lock.enter();
    {
        Access access(lock);
        access.leave();
        EXPECT_FALSE(access.held());
        EXPECT_EQ(word(access, heldFlag), 0U);
        EXPECT_EQ(lock.holdCount(), 1U);
        access.leave();
        EXPECT_EQ(lock.holdCount(), 1U);
    }
    EXPECT_EQ(lock.holdCount(), 1U);
    lock.leave();
}

TEST(CriticalSectionAccess, WithoutTheFlagTheLockIsNotLeft)
{
    CriticalSection lock;
    {
        Access access(lock);
        setWord(access, heldFlag, 0);
    }
    EXPECT_EQ(lock.holdCount(), 1U);
    lock.leave();
}

TEST(CriticalSectionAccess, ModesZeroAndOneLeaveTheLockAndOthersDoNot)
{
    CriticalSection lock;
    for (std::uint32_t const value : {0U, 1U}) {
        {
            Access access(lock);
            setWord(access, mode, value);
        }
        EXPECT_EQ(lock.holdCount(), 0U) << value;
    }
    {
        Access access(lock);
        setWord(access, mode, 2);
    }
    EXPECT_EQ(lock.holdCount(), 1U);
    lock.leave();
}

} // namespace
