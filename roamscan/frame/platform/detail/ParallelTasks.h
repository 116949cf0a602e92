#pragma once

#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>
#include <tbb/task_group.h>

#include <cstddef>

#if defined(__SANITIZE_THREAD__)
#define ROAMSCAN_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ROAMSCAN_THREAD_SANITIZER
#endif
#endif

#if defined(ROAMSCAN_THREAD_SANITIZER)
#include <sanitizer/tsan_interface.h>
#endif

namespace oV::Roamscan::detail
{

#if defined(ROAMSCAN_THREAD_SANITIZER)

/// Reports the synchronization of a parallel loop to ThreadSanitizer. TBB itself synchronizes, but it is not
/// compiled with ThreadSanitizer, which therefore cannot see it. Races between two tasks are still found.
class ThreadSanitizerLoop
{
public:
    /// What the caller did before the loop happens before each task.
    ThreadSanitizerLoop() { __tsan_release(&begin_); }
    /// What the tasks did happens before what the caller does after the loop.
    ~ThreadSanitizerLoop() { __tsan_acquire(&end_); }
    ThreadSanitizerLoop(ThreadSanitizerLoop const&) = delete;
    ThreadSanitizerLoop& operator=(ThreadSanitizerLoop const&) = delete;

    /// Lives as long as a task runs, also if the task throws.
    class TaskScope
    {
    public:
        explicit TaskScope(ThreadSanitizerLoop& loop) : loop_(loop) { __tsan_acquire(&loop_.begin_); }
        ~TaskScope() { __tsan_release(&loop_.end_); }
        TaskScope(TaskScope const&) = delete;
        TaskScope& operator=(TaskScope const&) = delete;

    private:
        ThreadSanitizerLoop& loop_;
    };

private:
    char begin_ = 0;
    char end_ = 0;
};

#endif

/// Calls `task(i)` for each `i` in [0, count) on TBB's threads, each call as a task of its own, and waits for
/// all of them.
///
/// The loop is isolated: cancelling a task group of the caller does not skip tasks of this loop.
/// @throws the first exception thrown by a task; tasks that have not started by then are skipped
template <typename Task>
void inParallel(std::size_t count, Task const& task)
{
    tbb::task_group_context context(tbb::task_group_context::isolated);
#if defined(ROAMSCAN_THREAD_SANITIZER)
    ThreadSanitizerLoop loop;
    auto const run = [&loop, &task](std::size_t i) {
        ThreadSanitizerLoop::TaskScope const scope(loop);
        task(i);
    };
#else
    Task const& run = task;
#endif
    tbb::parallel_for(std::size_t{0}, count, run, tbb::simple_partitioner(), context);
}

} // namespace oV::Roamscan::detail
