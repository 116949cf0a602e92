#pragma once

#include <roamscan/frame/platform/ImageHandle.h>

#include <cstdint>

namespace oV::Roamscan
{

/// Why the entry point is called.
enum class EntryReason : std::uint32_t
{
    ProcessDetach = 0, ///< The library is about to be unloaded; the load-time objects still exist.
    ProcessAttach = 1  ///< The library has been loaded, and its load-time objects exist.
};

/// Attaches the library's module to its image, or detaches it. Other reasons do nothing.
/// @return 0 if the module cannot be attached, else 1
int entryPoint(ImageHandle image, EntryReason reason) noexcept;

} // namespace oV::Roamscan
