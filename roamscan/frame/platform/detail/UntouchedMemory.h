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

/// Memory that is not touched, so that what is never written to costs address space alone. Where it is large
/// and the system can be told so, it comes in large pages as it is written to: the system is entered far less
/// often for them. Null if it is not to be had.
[[nodiscard]] UntouchedMemory allocateUntouched(std::size_t size) noexcept;

} // namespace oV::Roamscan::detail
