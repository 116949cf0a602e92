#include <roamscan/frame/platform/detail/UntouchedMemory.h>

#if defined(__linux__)
#include <stdlib.h>
#include <sys/mman.h>
#endif

namespace oV::Roamscan::detail
{

UntouchedMemory allocateUntouched(std::size_t size) noexcept
{
#if defined(__linux__)
    constexpr std::size_t largePage = std::size_t{2} << 20;
    if (size >= 2 * largePage) {
        void* memory = nullptr;
        if (posix_memalign(&memory, largePage, size) != 0) {
            return nullptr;
        }
        (void)madvise(memory, size, MADV_HUGEPAGE); // a hint; where it is not taken, all is as before
        return UntouchedMemory(static_cast<std::byte*>(memory));
    }
#endif
    return UntouchedMemory(static_cast<std::byte*>(std::malloc(size == 0 ? 1 : size)));
}

} // namespace oV::Roamscan::detail
