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

/// Memory that is released by std::free().
using UntouchedMemory = std::unique_ptr<std::byte[], FreeMemory>;

/// Requests huge pages for memory that has not been written to yet. They need far fewer page faults. This is
/// a hint: it has no effect on small blocks, or if the system does not support it.
void preferLargePages(void* memory, std::size_t size) noexcept;

/// Allocates memory without writing to it. Pages that are never written to use only address space. Large
/// blocks use huge pages.
/// @return null if the memory cannot be allocated
[[nodiscard]] UntouchedMemory allocateUntouched(std::size_t size) noexcept;

} // namespace oV::Roamscan::detail
