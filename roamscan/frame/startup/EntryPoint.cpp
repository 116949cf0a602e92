#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/startup/EntryPoint.h>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace oV::Roamscan
{

int entryPoint(ImageHandle image, EntryReason reason, void* /*reserved*/) noexcept
{
    // The platform takes no exception here. One can only come from a lack of memory.
    try {
        if (reason == EntryReason::ProcessAttach) {
            return Bv_1_1::Module::library().internalInit(image) ? 1 : 0;
        }
        if (reason == EntryReason::ProcessDetach) {
            Bv_1_1::Module::library().internalTerm();
        }
    } catch (...) {
        return reason == EntryReason::ProcessAttach ? 0 : 1;
    }
    return 1;
}

} // namespace oV::Roamscan

#if defined(_WIN32) && !defined(ROAMSCAN_STATIC)
extern "C" BOOL WINAPI DllMain(HINSTANCE image, DWORD reason, void* reserved)
{
    return oV::Roamscan::entryPoint(image, static_cast<oV::Roamscan::EntryReason>(reason), reserved);
}
#endif
