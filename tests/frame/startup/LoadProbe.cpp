/// @file
/// Loads the library while the program runs, uses it and unloads it again, several times: everything that is
/// constructed at load is usable, and unloading does not crash the host. The only argument is the
/// library's path.

#include <roamscan/frame/platform/IntegerTypes.h>

#include <dlfcn.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        return 1;
    }
    for (int round = 0; round < 3; ++round) {
        void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 2;
        }
        // int64 oV::Roamscan::TimeConversion::convertTxmTimeToIntegerTime(_ULARGE_INTEGER const&), which
        // multiplies by the ratio that is computed at load.
        void* const symbol = dlsym(
            library, "_ZN2oV8Roamscan14TimeConversion27convertTxmTimeToIntegerTimeERK15_ULARGE_INTEGER");
        if (symbol == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 3;
        }
        _ULARGE_INTEGER txm;
        txm.QuadPart = 7;
        if (reinterpret_cast<int64 (*)(_ULARGE_INTEGER const&)>(symbol)(txm) != 700) {
            return 4;
        }
        if (dlclose(library) != 0) {
            return 5;
        }
    }
    return 0;
}
