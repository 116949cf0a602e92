#pragma once

#include <cstddef>
#include <cstring>

namespace support
{

/// Whether virtualSlot() is supported: in the Itanium C++ ABI on x86-64, a pointer to a virtual function
/// holds its offset in the table, plus one.
#if defined(__x86_64__) // not defined by Microsoft's compiler
inline constexpr bool virtualSlotsAreKnown = true;
#else
inline constexpr bool virtualSlotsAreKnown = false;
#endif

/// The index of a virtual function in the virtual table of its class. A destructor takes two entries.
template <typename Operation>
std::size_t virtualSlot(Operation operation)
{
    std::size_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return (word - 1) / sizeof(void*);
}

} // namespace support
