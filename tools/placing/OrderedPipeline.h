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
/// time and in order, `convert` for several blocks at once. Each thread has one block, so that the memory
/// does not depend on the number of blocks.
template <typename Block, typename Read, typename Convert, typename Write>
class OrderedPipeline
{
public:
    /// @param read called as `bool read(Block&)`; false ends the work
    /// @param convert called as `void convert(Block&)`
    /// @param write called as `void write(Block&)`
    OrderedPipeline(Read read, Convert convert, Write write) : read_(read), convert_(convert), write_(write)
    {}

    /// Returns when every block is written.
    /// @throws the exception of the first block that failed in any stage; the blocks before it are written
    void run(std::size_t threads)
    {
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
    void work()
    {
        Block block;
        while (true) {
            std::exception_ptr failure;
            std::uint64_t number = 0;
            if (!readNext(block, number, failure)) {
                return;
            }
            if (!failure) {
                failure = attempt([&] { convert_(block); });
            }
            writeInTurn(block, number, failure);
        }
    }

    /// False if there is no further block.
    bool readNext(Block& block, std::uint64_t& number, std::exception_ptr& failure)
    {
        std::lock_guard const lock(readMutex_);
        if (ended_) {
            return false;
        }
        bool more = true;
        failure = attempt([&] { more = read_(block); });
        ended_ = !more || failure;
        number = nextRead_;
        nextRead_ += more ? 1 : 0;
        return more;
    }

    void writeInTurn(Block& block, std::uint64_t number, std::exception_ptr failure)
    {
        std::unique_lock lock(writeMutex_);
        turn_.wait(lock, [&] { return nextWrite_ == number; });
        if (!failure_) {
            failure_ = failure ? failure : attempt([&] { write_(block); });
        }
        bool const failed = failure_ != nullptr;
        ++nextWrite_;
        lock.unlock();
        turn_.notify_all();
        if (failed) {
            std::lock_guard const readLock(readMutex_);
            ended_ = true;
        }
    }

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

    std::mutex readMutex_;
    bool ended_ = false;
    std::uint64_t nextRead_ = 0;

    std::mutex writeMutex_;
    std::condition_variable turn_;
    std::uint64_t nextWrite_ = 0;
    std::exception_ptr failure_; // of the first block that failed
};

/// One thread for each core, and one more, because a thread that reads or writes often waits.
[[nodiscard]] inline std::size_t pipelineThreads()
{
    constexpr unsigned most = 32; // bounds the memory
    return std::min(std::max(std::thread::hardware_concurrency(), 1U) + 1, most);
}

} // namespace oV::Roamscan::tool
