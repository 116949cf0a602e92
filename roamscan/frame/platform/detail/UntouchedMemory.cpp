#include <roamscan/frame/platform/detail/UntouchedMemory.h>

#include <cstdint>
#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace oV::Roamscan::detail
{

#if defined(__linux__)
namespace
{

constexpr std::size_t largePage = std::size_t{2} << 20;
constexpr std::size_t worthLargePages = 2 * largePage;

} // namespace
#endif

void preferLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept
{
#if defined(__linux__)
    if (size >= worthLargePages) {
        // The hint must start at a huge page boundary; the bytes before it keep ordinary pages.
        auto const begin = reinterpret_cast<std::uintptr_t>(memory);
        auto const skipped = (largePage - begin % largePage) % largePage;
        (void)madvise(static_cast<std::byte*>(memory) + skipped, size - skipped, MADV_HUGEPAGE);
    }
#endif
}

UntouchedMemory allocateUntouched(std::size_t size) noexcept
{
#if defined(__linux__)
    if (size >= worthLargePages) {
        void* memory = nullptr;
        if (posix_memalign(&memory, largePage, size) != 0) {
            return nullptr;
        }
        preferLargePages(memory, size);
        return UntouchedMemory(static_cast<std::byte*>(memory));
    }
#endif
    return UntouchedMemory(static_cast<std::byte*>(std::malloc(size == 0 ? 1 : size)));
}

} // namespace oV::Roamscan::detail
