#pragma once

#if defined(_WIN32)
#include <windows.h>
#else
#include <mutex>
#endif

namespace oV::Roamscan
{

/// The platform's recursive lock. A thread that holds it may enter it again, and must leave it as often as it
/// entered.
class RecursiveLock
{
public:
    RecursiveLock(RecursiveLock const&) = delete;
    RecursiveLock& operator=(RecursiveLock const&) = delete;

#if defined(_WIN32)
    /// @param spinCount how often a waiting thread retries before it sleeps
    explicit RecursiveLock(unsigned int spinCount) noexcept
    {
        InitializeCriticalSectionAndSpinCount(&section_, spinCount);
    }
    ~RecursiveLock()
    {
        DeleteCriticalSection(&section_);
    }

    /// Blocks until no other thread holds the lock, then enters it.
    void enter()
    {
        EnterCriticalSection(&section_);
    }
    /// Enters the lock without blocking.
    /// @return false if another thread holds the lock; it is not entered then
    [[nodiscard]] bool tryEnter() noexcept
    {
        return TryEnterCriticalSection(&section_) != 0;
    }
    /// Reverts one enter() or successful tryEnter() of this thread.
    void leave() noexcept
    {
        LeaveCriticalSection(&section_);
    }

private:
    CRITICAL_SECTION section_;
#else
    /// The spin count is ignored on this platform.
    explicit RecursiveLock(unsigned int) noexcept {}
    // Not trivial, as on Windows: a lock that is constructed at load has an exit action on every platform.
    ~RecursiveLock() {} // NOLINT(modernize-use-equals-default)

    /// Blocks until no other thread holds the lock, then enters it.
    /// @throws std::system_error if the thread has entered the lock too often
    void enter()
    {
        mutex_.lock();
    }
    /// Enters the lock without blocking.
    /// @return false if another thread holds the lock; it is not entered then
    [[nodiscard]] bool tryEnter() noexcept
    {
        return mutex_.try_lock();
    }
    /// Reverts one enter() or successful tryEnter() of this thread.
    void leave() noexcept
    {
        mutex_.unlock();
    }

private:
    std::recursive_mutex mutex_;
#endif
};

} // namespace oV::Roamscan
