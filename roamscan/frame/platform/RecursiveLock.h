#pragma once

#if defined(_WIN32)
#include <windows.h>
#else
#include <mutex>
#endif

namespace oV::Roamscan
{

/// The platform's recursive lock: a thread that holds it may enter again and leaves as often as it entered.
class RecursiveLock
{
public:
    RecursiveLock(RecursiveLock const&) = delete;
    RecursiveLock& operator=(RecursiveLock const&) = delete;

#if defined(_WIN32)
    /// `spinCount` is how often a waiting thread tries before it sleeps.
    explicit RecursiveLock(unsigned int spinCount) noexcept
    {
        InitializeCriticalSectionAndSpinCount(&section_, spinCount);
    }
    ~RecursiveLock()
    {
        DeleteCriticalSection(&section_);
    }

    /// Waits until no other thread holds the lock, and takes it once more.
    void enter()
    {
        EnterCriticalSection(&section_);
    }
    /// Takes the lock once more unless another thread holds it.
    [[nodiscard]] bool tryEnter() noexcept
    {
        return TryEnterCriticalSection(&section_) != 0;
    }
    /// Gives one hold back.
    void leave() noexcept
    {
        LeaveCriticalSection(&section_);
    }

private:
    CRITICAL_SECTION section_;
#else
    /// The platform has no spin count.
    explicit RecursiveLock(unsigned int) noexcept {}
    ~RecursiveLock() = default;

    /// @overload
    void enter()
    {
        mutex_.lock();
    }
    /// @overload
    [[nodiscard]] bool tryEnter() noexcept
    {
        return mutex_.try_lock();
    }
    /// @overload
    void leave() noexcept
    {
        mutex_.unlock();
    }

private:
    std::recursive_mutex mutex_;
#endif
};

} // namespace oV::Roamscan
