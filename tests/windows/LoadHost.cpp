/// @file
/// A host that is not linked to the library. It loads a plug-in, and the library with it, and checks the
/// library between loading and unloading:
///
///     load_host PLUGIN unload|options|exit
///
/// - unload  loads and unloads the plug-in twice
/// - options the same, and brings up the options each time
/// - exit    loads the plug-in, brings up the options, and exits without unloading it

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{

constexpr wchar_t const* libraryName = L"RoamscanDataStructures.dll";

void require(bool condition, char const* text)
{
    if (!condition) {
        std::fprintf(stderr, "failed: %s (error %lu)\n", text, GetLastError());
        std::exit(1);
    }
}

bool isLibraryLoaded()
{
    return GetModuleHandleW(libraryName) != nullptr;
}

void expect(HMODULE plugin, char const* function)
{
    // By way of a generic function pointer: GCC warns of a direct cast between functions.
    auto const symbol = reinterpret_cast<void (*)()>(GetProcAddress(plugin, function));
    require(symbol != nullptr && reinterpret_cast<bool (*)()>(symbol)(), function);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        return 2;
    }
    std::string_view const host = argv[2];
    int const loads = host == "exit" ? 1 : 2;
    for (int i = 0; i < loads; ++i) {
        require(!isLibraryLoaded(), "the library is not loaded yet");
        HMODULE const plugin = LoadLibraryA(argv[1]);
        require(plugin != nullptr, "the plug-in can be loaded");
        require(isLibraryLoaded(), "the plug-in is linked to the library");
        expect(plugin, "isFreshlyLoaded");
        if (host != "unload") {
            expect(plugin, "bringUpOptions");
        }
        if (host != "exit") {
            require(FreeLibrary(plugin) != 0, "the plug-in can be unloaded");
            require(!isLibraryLoaded(), "the library is unloaded with the plug-in");
        }
    }
    return 0;
}
