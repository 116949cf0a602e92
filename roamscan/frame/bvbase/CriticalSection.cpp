#include <roamscan/frame/bvbase/CriticalSection.h>

namespace Bv_1_1
{

CriticalSection::CriticalSection(unsigned int spinCount) noexcept : lock_(spinCount) {}

CriticalSection::~CriticalSection() = default;

void CriticalSection::enter()
{
    lock_.enter();
    countUp();
}

bool CriticalSection::tryEnter() noexcept
{
    if (!lock_.tryEnter()) {
        return false;
    }
    countUp();
    return true;
}

void CriticalSection::leave() noexcept
{
    countDown();
    lock_.leave();
}

// Only the thread that holds the lock writes the count, so no atomic increment is needed. The count is atomic
// for concurrent readers.
void CriticalSection::countUp() noexcept
{
    holds_.store(holdCount() + 1, std::memory_order_relaxed);
}

void CriticalSection::countDown() noexcept
{
    holds_.store(holdCount() - 1, std::memory_order_relaxed);
}

CriticalSection::Access::Access(CriticalSection& lock) : lock_(&lock)
{
    lock_->enter();
    held_ = 1;
}

CriticalSection::Access::~Access()
{
    leave();
}

void CriticalSection::Access::leave() noexcept
{
    if (held_ != 0 && mode_ <= 1) {
        lock_->leave();
        held_ = 0;
    }
}

} // namespace Bv_1_1
