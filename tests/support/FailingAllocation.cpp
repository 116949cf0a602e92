#include "tests/support/FailingAllocation.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace
{

// Allocations that are still granted; below zero: all of them.
std::atomic<long> granted = -1;

bool isGranted()
{
    long const left = granted.load();
    if (left < 0) {
        return true;
    }
    return left > 0 && granted.fetch_sub(1) > 0;
}

} // namespace

// Not inlined, so that the compiler recognises each pair of new and delete.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    void* const memory = isGranted() ? std::malloc(size == 0 ? 1 : size) : nullptr;
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace support
{

void grantAllocations(long count)
{
    granted = count;
}

} // namespace support
