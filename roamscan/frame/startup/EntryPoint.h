#pragma once

#include <roamscan/frame/platform/ImageHandle.h>

#include <cstdint>

namespace oV::Roamscan
{

/// Why the entry point is called. The platform may also pass other values.
enum class EntryReason : std::uint32_t
{
    ProcessDetach = 0, ///< The library is about to be unloaded; the load-time objects still exist.
    ProcessAttach = 1  ///< The library has been loaded, and its load-time objects exist.
};

/// Attaches the library's module to its image, or detaches it. Does nothing for other reasons.
/// @param image the loaded library; only used to attach
/// @param reserved not used
/// @return 0 if the module cannot be attached, otherwise 1
int entryPoint(ImageHandle image, EntryReason reason, void* reserved) noexcept;

} // namespace oV::Roamscan
