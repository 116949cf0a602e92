#include <roamscan/frame/values/Endianness.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{

using oV::Endianness;

TEST(Endianness, StartsWithThePlatformsByteOrder)
{
    // All other tests only set the flag to its initial value on this platform.
    int const number = 1;
    EXPECT_EQ(Endianness::bigEndian, *reinterpret_cast<char const*>(&number) == 0);
}

TEST(Endianness, KeepsTheStoredValue)
{
    bool const former = Endianness::bigEndian;
    Endianness::bigEndian = true;
    EXPECT_TRUE(Endianness::bigEndian);
    Endianness::bigEndian = false;
    EXPECT_FALSE(Endianness::bigEndian);
    Endianness::bigEndian = former;
}

TEST(Endianness, MayBeClearedOnManyThreads)
{
    bool const former = Endianness::bigEndian;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 1000; ++round) {
                Endianness::bigEndian = false;
                EXPECT_FALSE(Endianness::bigEndian);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    Endianness::bigEndian = former;
}

} // namespace
