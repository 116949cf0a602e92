#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/RecursiveLock.h>

#include <atomic>
#include <cstdint>

namespace Bv_1_1
{

/// A recursive lock that counts how many times it is held.
///
/// @note The count is incremented after entering and decremented before leaving. So a thread that has just
///     entered reads 1 if and only if it did not hold the lock before.
class ROAMSCAN_EXPORT CriticalSection
{
public:
    /// @param spinCount how often a waiting thread retries before it sleeps; ignored except on Windows
    explicit CriticalSection(unsigned int spinCount = 4000) noexcept : lock_(spinCount) {}
    CriticalSection(CriticalSection const&) = delete;
    CriticalSection& operator=(CriticalSection const&) = delete;
    ~CriticalSection() = default;

    /// Blocks until this thread holds the lock.
    void enter()
    {
        lock_.enter();
        countUp();
    }

    /// Enters the lock without blocking.
    /// @return false if another thread holds the lock; it is not entered then
    [[nodiscard]] bool tryEnter() noexcept
    {
        if (!lock_.tryEnter()) {
            return false;
        }
        countUp();
        return true;
    }

    /// Reverts one enter() or successful tryEnter() of this thread.
    void leave() noexcept
    {
        countDown();
        lock_.leave();
    }

    /// How many times the lock is held. Any thread may read the count, but it is only reliable on the thread
    /// that holds the lock.
    [[nodiscard]] std::uint32_t holdCount() const noexcept { return holds_.load(std::memory_order_relaxed); }

    class Access;

private:
    // Only the thread that holds the lock writes the count, so no atomic increment is needed. The count is
    // atomic for concurrent readers.
    void countUp() noexcept { holds_.store(holdCount() + 1, std::memory_order_relaxed); }
    void countDown() noexcept { holds_.store(holdCount() - 1, std::memory_order_relaxed); }

    oV::Roamscan::RecursiveLock lock_;
    std::atomic<std::uint32_t> holds_ = 0;
};

/// A scope guard that holds a lock.
class ROAMSCAN_EXPORT CriticalSection::Access
{
public:
    /// Enters the lock, which must outlive this object.
    explicit Access(CriticalSection& lock) : lock_(&lock)
    {
        lock_->enter();
        held_ = 1;
    }
    Access(Access const&) = delete;
    Access& operator=(Access const&) = delete;

    /// Leaves the lock if this guard still holds it.
    ~Access() { leave(); }

    /// Whether this guard holds the lock.
    [[nodiscard]] bool held() const noexcept { return held_ != 0; }

    /// Leaves the lock before the end of the scope. Does nothing if the guard no longer holds it.
    void leave() noexcept
    {
        if (held_ != 0 && mode_ <= 1) {
            lock_->leave();
            held_ = 0;
        }
    }

private:
    // The layout is part of the binary interface.
    CriticalSection* lock_;
    std::uint32_t mode_ = 1; // always 1 here; guards with mode 0 or 1 leave the lock
    std::uint32_t held_ = 0;
};

} // namespace Bv_1_1
