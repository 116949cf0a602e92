#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/RecursiveLock.h>

#include <atomic>
#include <cstdint>

namespace Bv_1_1
{

/// A recursive lock that counts how many times it is held.
///
/// Callers may rely on the count being kept here and not by the platform: it is raised after entering and
/// lowered before leaving, so a thread that has just entered reads 1 only if it did not hold the lock before.
class ROAMSCAN_EXPORT CriticalSection
{
public:
    /// `spinCount` is how often a waiting thread tries before it sleeps; platforms without one ignore it.
    explicit CriticalSection(unsigned int spinCount = 4000) noexcept;
    CriticalSection(CriticalSection const&) = delete;
    CriticalSection& operator=(CriticalSection const&) = delete;
    ~CriticalSection();

    /// Waits until the lock is this thread's.
    void enter();

    /// Enters without waiting. False, and the lock not entered, if another thread holds it.
    [[nodiscard]] bool tryEnter() noexcept;

    /// Undoes one enter() or tryEnter() of this thread.
    void leave() noexcept;

    /// How many times the lock is held. It means something to the thread that holds the lock; any thread may
    /// read it.
    [[nodiscard]] std::uint32_t holdCount() const noexcept { return holds_.load(std::memory_order_relaxed); }

    class Access;

private:
    void countUp() noexcept;
    void countDown() noexcept;

    oV::Roamscan::RecursiveLock lock_;
    std::atomic<std::uint32_t> holds_ = 0; // changed only by the thread that holds the lock
};

/// Holds a lock for a scope.
class ROAMSCAN_EXPORT CriticalSection::Access
{
public:
    /// Enters the lock, which must outlive this object.
    explicit Access(CriticalSection& lock);
    Access(Access const&) = delete;
    Access& operator=(Access const&) = delete;

    /// Leaves the lock if it is still held.
    ~Access();

    /// Whether this guard holds the lock.
    [[nodiscard]] bool held() const noexcept { return held_ != 0; }

    /// Leaves the lock before the scope ends; does nothing if it is not held any more.
    void leave() noexcept;

private:
    // The layout is part of the binary interface.
    CriticalSection* lock_;
    std::uint32_t mode_ = 1; // guards of mode 0 and 1 leave the lock, and here all are of mode 1
    std::uint32_t held_ = 0;
};

} // namespace Bv_1_1
