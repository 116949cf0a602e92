#include <roamscan/frame/platform/detail/ParallelTasks.h>

#include <gtest/gtest.h>
#include <tbb/parallel_for.h>
#include <tbb/task_group.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <stdexcept>
#include <vector>

using oV::Roamscan::detail::inParallel;

TEST(ParallelTasks, EachIndexRunsOnce)
{
    for (std::size_t const count : {0U, 1U, 2U, 1000U}) {
        std::vector<int> calls(count); // not atomic: no two tasks share an element
        inParallel(count, [&calls](std::size_t i) { ++calls[i]; });
        EXPECT_EQ(std::ranges::count(calls, 1), static_cast<std::ptrdiff_t>(count));
    }
}

TEST(ParallelTasks, TheExceptionOfATaskReachesTheCaller)
{
    auto const throwAt = [](std::size_t failing) {
        inParallel(100, [failing](std::size_t i) {
            if (i == failing) {
                throw std::out_of_range("task");
            }
        });
    };
    EXPECT_THROW(throwAt(0), std::out_of_range);
    EXPECT_THROW(throwAt(99), std::out_of_range);
    EXPECT_NO_THROW(throwAt(100));
}

TEST(ParallelTasks, ACancelledGroupOfTheCallerSkipsNoTask)
{
    std::atomic<int> calls = 0;
    tbb::task_group_context callers;
    tbb::parallel_for(
        0,
        1,
        [&](int) {
            callers.cancel_group_execution();
            inParallel(100, [&calls](std::size_t) { ++calls; });
        },
        callers);
    EXPECT_EQ(calls, 100);
}
