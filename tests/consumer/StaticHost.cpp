/// @file
/// A program that links the static library and refers to few of its objects. It prints which objects of the
/// library are constructed and released, and fails if they do not exist before its own objects.

#include "tests/frame/startup/RecordedObjects.h"
#include "tests/frame/startup/StartupPlugin.h"

#include <link.h>

#include <cstdio>

extern "C" void* __dso_handle; // NOLINT: the name is fixed

namespace
{

// Constructed before main(), like an object of the program's own that uses the library.
bool const isUsableBeforeMain = isFreshlyLoaded();

} // namespace

bool support::hasTheLibrary(void* image, std::uintptr_t& base)
{
    auto const baseOfFirst = [](dl_phdr_info* program, std::size_t /*size*/, void* result) -> int {
        *static_cast<std::uintptr_t*>(result) = program->dlpi_addr;
        return 1; // the first image is the program; stop
    };
    dl_iterate_phdr(baseOfFirst, &base);
    return image == static_cast<void*>(&__dso_handle);
}

int main()
{
    std::puts("loaded");
    if (!isUsableBeforeMain || !isFreshlyLoaded()) {
        return 1;
    }
    return bringUpOptions() ? 0 : 2;
}
