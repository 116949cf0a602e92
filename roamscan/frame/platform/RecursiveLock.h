#pragma once

#if defined(_WIN32)
#include <roamscan/frame/platform/Export.h>

#include <cstddef>
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
    ROAMSCAN_EXPORT explicit RecursiveLock(unsigned int spinCount) noexcept;
    ROAMSCAN_EXPORT ~RecursiveLock();

    /// Blocks until no other thread holds the lock, then enters it.
    ROAMSCAN_EXPORT void enter() noexcept;
    /// Enters the lock without blocking.
    /// @return false if another thread holds the lock; it is not entered then
    [[nodiscard]] ROAMSCAN_EXPORT bool tryEnter() noexcept;
    /// Reverts one enter() or successful tryEnter() of this thread.
    ROAMSCAN_EXPORT void leave() noexcept;

private:
    // The memory of a CRITICAL_SECTION. The type itself would need <windows.h> here.
    alignas(void*) std::byte section_[40];
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
