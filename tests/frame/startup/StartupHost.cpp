/// @file
/// A host that is not linked to the library. It loads a plug-in, and the library with it, and prints which
/// objects of the library are constructed and released:
///
///     startup_host PLUGIN unload|options|exit
///
/// - unload  loads and unloads the plug-in twice
/// - options the same, and brings up the options each time
/// - exit    loads the plug-in, brings up the options, and exits without unloading it

#include "tests/frame/startup/RecordedObjects.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{

constexpr char const* libraryName = "libRoamscanDataStructures.so";

bool isLibraryLoaded()
{
    auto const isLibrary = [](dl_phdr_info* image, std::size_t /*size*/, void* /*data*/) -> int {
        return std::string_view(image->dlpi_name).find(libraryName) != std::string_view::npos ? 1 : 0;
    };
    return dl_iterate_phdr(isLibrary, nullptr) != 0;
}

[[noreturn]] void fail(char const* text)
{
    char const* const reason = dlerror();
    std::fprintf(stderr, "%s %s\n", text, reason != nullptr ? reason : "");
    std::_Exit(1);
}

void* load(char const* path)
{
    support::expectLoad();
    void* const plugin = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        fail("the plug-in cannot be loaded:");
    }
    if (!isLibraryLoaded()) {
        fail("the plug-in is not linked to the library");
    }
    std::puts("loaded");
    return plugin;
}

void expect(void* plugin, char const* function)
{
    void* const symbol = dlsym(plugin, function);
    if (symbol == nullptr || !reinterpret_cast<bool (*)()>(symbol)()) {
        fail(function);
    }
}

void unload(void* plugin)
{
    if (dlclose(plugin) != 0) {
        fail("the plug-in cannot be unloaded:");
    }
    if (isLibraryLoaded()) {
        fail("the library is still loaded");
    }
    std::puts("unloaded");
}

} // namespace

bool support::hasTheLibrary(void* image, std::uintptr_t& base)
{
    Dl_info loaded;
    if (image == nullptr || dladdr(image, &loaded) == 0 ||
        std::string_view(loaded.dli_fname).find(libraryName) == std::string_view::npos)
    {
        return false;
    }
    base = reinterpret_cast<std::uintptr_t>(loaded.dli_fbase);
    return true;
}

int main(int argc, char** argv)
{
    if (argc != 3) {
        return 2;
    }
    std::string_view const host = argv[2];
    int const loads = host == "exit" ? 1 : 2;
    for (int i = 0; i < loads; ++i) {
        void* const plugin = load(argv[1]);
        expect(plugin, "isFreshlyLoaded");
        if (host != "unload") {
            expect(plugin, "bringUpOptions");
        }
        if (host != "exit") {
            unload(plugin);
        }
    }
    return 0;
}
