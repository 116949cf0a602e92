#pragma once

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>
#include <tbb/task_group.h>

#include <atomic>
#include <cstddef>

namespace oV::Roamscan::detail
{

/// Calls `task(i)` for each i below `count`, on TBB's threads, each call a task of its own. Returns when all
/// have come to their end. An exception of a task passes on to the caller, and tasks that have not begun then
/// do not begin.
///
/// Isolated from the task groups of the caller: one that is cancelled does not skip tasks here.
template <typename Task>
void inParallel(std::size_t count, Task const& task)
{
    // The loop hands everything that the caller has written over to the tasks, and back again. This does it
    // once more, where tools can see it that do not look into TBB.
    std::atomic<std::size_t> handOver = 0;
    struct HandBack
    {
        std::atomic<std::size_t>& counter;
        ~HandBack() { counter.fetch_add(1, std::memory_order_acq_rel); }
    };
    handOver.store(0, std::memory_order_release);

    tbb::task_group_context context(tbb::task_group_context::isolated);
    HandBack const atTheEnd{handOver}; // also if a task throws
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, count),
        [&handOver, &task](tbb::blocked_range<std::size_t> const& range) {
            HandBack const atItsEnd{handOver};
            (void)handOver.load(std::memory_order_acquire);
            for (std::size_t i = range.begin(); i != range.end(); ++i) {
                task(i);
            }
        },
        tbb::simple_partitioner(),
        context);
}

} // namespace oV::Roamscan::detail
