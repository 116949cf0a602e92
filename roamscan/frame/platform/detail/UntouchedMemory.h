#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace oV::Roamscan::detail
{

struct FreeMemory
{
    void operator()(std::byte* memory) const noexcept { std::free(memory); }
};

/// Memory that std::free() gives back.
using UntouchedMemory = std::unique_ptr<std::byte[], FreeMemory>;

/// Asks for large pages for memory that is about to be written to for the first time: the system is entered
/// far less often for them. A hint, for large memory alone; nothing changes where it is not taken.
void preferLargePages(void* memory, std::size_t size) noexcept;

/// Memory that is not touched, so that what is never written to costs address space alone; in large pages
/// where it is large. Null if it is not to be had.
[[nodiscard]] UntouchedMemory allocateUntouched(std::size_t size) noexcept;

} // namespace oV::Roamscan::detail
