#pragma once

#include <new>

/// Allocations that fail on request. A program that links FailingAllocation.cpp replaces the allocation of
/// the whole process.
namespace support
{

/// Grants so many further allocations to all threads; a number below zero grants all of them.
void grantAllocations(long count);

/// Runs an operation with so many allocations granted.
/// @return whether it ran out of them
template <typename Operation>
bool runsOutOfMemory(long allocations, Operation const& operation)
{
    grantAllocations(allocations);
    try {
        operation();
    } catch (std::bad_alloc const&) {
        grantAllocations(-1);
        return true;
    }
    grantAllocations(-1);
    return false;
}

} // namespace support
