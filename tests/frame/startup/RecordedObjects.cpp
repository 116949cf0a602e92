#include "tests/frame/startup/RecordedObjects.h"

#include <roamscan/frame/bvbase/Module.h>

#include <dlfcn.h>

#include <array>
#include <cstddef>
#include <cstdio>

namespace
{

using ExitAction = void (*)(void*);
using RegisterExitAction = int (*)(ExitAction, void*, void*);

struct RecordedObject
{
    ExitAction release = nullptr;
    void* address = nullptr;
    std::uintptr_t offset = 0; // in the image of the library
};

// Plain data, because it is used before main() and still during exit. It has room for all loads of a run.
constinit std::array<RecordedObject, 256> objects{};
constinit std::size_t count = 0;
constinit std::size_t firstOfThisLoad = 0;

// The first object of each load is the module of the library; the names show whether it is.
char const* state()
{
    auto const* const module = static_cast<Bv_1_1::Module const*>(objects[firstOfThisLoad].address);
    return module->isAttached() ? "attached" : "detached";
}

void print(char const* what, RecordedObject const& object)
{
    std::printf("%s %zx %s\n", what, static_cast<std::size_t>(object.offset), state());
}

void releaseAndPrint(void* object)
{
    auto const& entry = *static_cast<RecordedObject const*>(object);
    print("releasing", entry);
    entry.release(entry.address);
}

} // namespace

void support::expectLoad()
{
    firstOfThisLoad = count;
}

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming): fixed
// name

/// Replaces the function of the C library in the whole process.
extern "C" __attribute__((visibility("default"))) int
__cxa_atexit(ExitAction release, void* object, void* image)
{
    static auto const original = reinterpret_cast<RegisterExitAction>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    std::uintptr_t base = 0;
    if (!support::hasTheLibrary(image, base)) {
        return original(release, object, image);
    }
    RecordedObject& entry = objects.at(count++);
    entry = {release, object, reinterpret_cast<std::uintptr_t>(object) - base};
    print("constructed", entry);
    return original(releaseAndPrint, &entry, image);
}

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
