/// @file
/// A host that is not linked to the library. It loads a plug-in, and the library with it, and prints which
/// objects of the library are constructed and released:
///
///     startup_host PLUGIN unload|options|exit
///
/// - unload  loads and unloads the plug-in twice
/// - options the same, and brings up the options each time
/// - exit    loads the plug-in, brings up the options, and exits without unloading it
///
/// A line is "constructed" or "releasing", the address of the object in the image of the library, and
/// "attached" or "detached", the state of the library's module at this time. The names of the objects are not
/// known here.

#include <roamscan/frame/bvbase/Module.h>

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{

constexpr char const* libraryName = "libRoamscanDataStructures.so";

using ExitAction = void (*)(void*);
using RegisterExitAction = int (*)(ExitAction, void*, void*);

struct LoadTimeObject
{
    ExitAction release = nullptr;
    void* address = nullptr;
    std::uintptr_t offset = 0; // in the image of the library
};

// Plain data, because it is still used during exit. It has room for all loads of a run.
constinit std::array<LoadTimeObject, 256> objects{};
constinit std::size_t count = 0;
constinit std::size_t firstOfThisLoad = 0;

// The first object of each load is the module of the library; the names show whether it is.
char const* state()
{
    auto const* const module = static_cast<Bv_1_1::Module const*>(objects[firstOfThisLoad].address);
    return module->isAttached() ? "attached" : "detached";
}

void print(char const* what, LoadTimeObject const& object)
{
    std::printf("%s %zx %s\n", what, static_cast<std::size_t>(object.offset), state());
}

void releaseAndPrint(void* object)
{
    auto const& entry = *static_cast<LoadTimeObject const*>(object);
    print("releasing", entry);
    entry.release(entry.address);
}

bool belongsToTheLibrary(void* handle, std::uintptr_t& base)
{
    Dl_info image;
    if (handle == nullptr || dladdr(handle, &image) == 0 ||
        std::string_view(image.dli_fname).find(libraryName) == std::string_view::npos)
    {
        return false;
    }
    base = reinterpret_cast<std::uintptr_t>(image.dli_fbase);
    return true;
}

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
    firstOfThisLoad = count;
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

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming): fixed
// name

/// Replaces the function of the C library in the whole process: the code that the compiler generates calls it
/// after each construction of an object with static storage duration.
extern "C" __attribute__((visibility("default"))) int
__cxa_atexit(ExitAction release, void* object, void* image)
{
    static auto const original = reinterpret_cast<RegisterExitAction>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    std::uintptr_t base = 0;
    if (!belongsToTheLibrary(image, base)) {
        return original(release, object, image);
    }
    LoadTimeObject& entry = objects.at(count++);
    entry = {release, object, reinterpret_cast<std::uintptr_t>(object) - base};
    print("constructed", entry);
    return original(releaseAndPrint, &entry, image);
}

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

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
