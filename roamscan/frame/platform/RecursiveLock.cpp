#include <roamscan/frame/platform/RecursiveLock.h>

#if defined(_WIN32)

#include <windows.h>

#include <new>

namespace oV::Roamscan
{

namespace
{

// NOLINTNEXTLINE(modernize-avoid-c-arrays): the array is the lock's member.
CRITICAL_SECTION* sectionIn(std::byte (&memory)[sizeof(CRITICAL_SECTION)]) noexcept
{
    static_assert(alignof(CRITICAL_SECTION) == alignof(void*));
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(memory));
}

} // namespace

RecursiveLock::RecursiveLock(unsigned int spinCount) noexcept
{
    // Since Windows Vista it cannot fail.
    InitializeCriticalSectionAndSpinCount(new (section_) CRITICAL_SECTION, spinCount);
}

RecursiveLock::~RecursiveLock()
{
    DeleteCriticalSection(sectionIn(section_));
}

void RecursiveLock::enter() noexcept
{
    EnterCriticalSection(sectionIn(section_));
}

bool RecursiveLock::tryEnter() noexcept
{
    return TryEnterCriticalSection(sectionIn(section_)) != 0;
}

void RecursiveLock::leave() noexcept
{
    LeaveCriticalSection(sectionIn(section_));
}

} // namespace oV::Roamscan

#endif
