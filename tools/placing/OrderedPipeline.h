#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace oV::Roamscan::tool
{

/// Runs three stages on several threads for one block after another: `read` and `write` for one block at a
/// time and in order, `convert` for several blocks at once. There are at most eight more blocks than threads,
/// so that the memory does not depend on how many are read. A thread does not wait for its turn to write: a
/// block that is converted before its turn is written by the thread that wrote the one before it.
template <typename Block, typename Read, typename Convert, typename Write>
class OrderedPipeline
{
public:
    /// @param read called as `bool read(Block&)`; false ends the work
    /// @param convert called as `void convert(Block&)`
    /// @param write called as `void write(Block&)`
    OrderedPipeline(Read read, Convert convert, Write write) : read_(read), convert_(convert), write_(write)
    {}

    /// Returns when every block is written. Can be called once.
    /// @throws the exception of the first block that failed in any stage; the blocks before it are written
    void run(std::size_t threads)
    {
        slots_ = std::vector<Slot>(threads + std::min<std::size_t>(threads, 8));
        {
            std::vector<std::jthread> others;
            for (std::size_t i = 1; i < threads; ++i) {
                others.emplace_back([this] { work(); });
            }
            work();
        }
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

private:
    struct Slot
    {
        Block block;
        std::exception_ptr failure;
        bool isReady = false; // to be written
    };

    void work()
    {
        while (Slot* const slot = readNext()) {
            if (!slot->failure) {
                slot->failure = attempt([&] { convert_(slot->block); });
            }
            writeReady(*slot);
        }
    }

    /// Null if there is no further block.
    Slot* readNext()
    {
        std::lock_guard const readLock(readMutex_);
        Slot& slot = slotOf(nextRead_);
        {
            std::unique_lock lock(mutex_);
            written_.wait(lock, [&] { return nextRead_ < nextWrite_ + slots_.size(); });
            if (ended_) {
                return nullptr;
            }
        }
        bool more = true;
        slot.failure = attempt([&] { more = read_(slot.block); });
        if (!more || slot.failure) {
            end();
        }
        nextRead_ += more ? 1 : 0;
        return more ? &slot : nullptr;
    }

    /// Writes this block and those after it that are ready, unless it is not their turn, or another thread
    /// writes, which then finds them.
    void writeReady(Slot& converted)
    {
        std::unique_lock lock(mutex_);
        converted.isReady = true;
        if (writing_) {
            return;
        }
        writing_ = true;
        for (Slot* slot = &slotOf(nextWrite_); slot->isReady; slot = &slotOf(nextWrite_)) {
            lock.unlock();
            if (!failure_) {
                failure_ = slot->failure ? slot->failure : attempt([&] { write_(slot->block); });
            }
            lock.lock();
            ended_ = ended_ || failure_;
            slot->isReady = false;
            ++nextWrite_;
            written_.notify_one();
        }
        writing_ = false;
    }

    /// No further block is read.
    void end()
    {
        std::lock_guard const lock(mutex_);
        ended_ = true;
    }

    Slot& slotOf(std::uint64_t number) { return slots_[number % slots_.size()]; }

    template <typename Action>
    static std::exception_ptr attempt(Action const& action)
    {
        try {
            action();
        } catch (...) {
            return std::current_exception();
        }
        return nullptr;
    }

    Read read_;
    Convert convert_;
    Write write_;

    std::vector<Slot> slots_;

    std::mutex readMutex_; // of the stage; locked before mutex_
    std::uint64_t nextRead_ = 0;

    std::mutex mutex_;
    std::condition_variable written_;
    std::uint64_t nextWrite_ = 0;
    bool writing_ = false;
    bool ended_ = false;

    std::exception_ptr failure_; // of the first block that failed; for the thread that writes
};

/// One thread for each core, and at least two, because a thread that reads or writes may wait.
[[nodiscard]] inline std::size_t pipelineThreads()
{
    constexpr unsigned most = 32; // bounds the memory
    return std::clamp(std::thread::hardware_concurrency(), 2U, most);
}

} // namespace oV::Roamscan::tool
