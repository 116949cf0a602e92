#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV::Roamscan
{

class RoamscanOptionsCont;

/// Creates the options at the start of the host. Plug-ins do not need it.
class ROAMSCAN_EXPORT RoamscanOptionsHost
{
public:
    RoamscanOptionsHost() = delete;

    /// Creates the singleton RoamscanOptions with this container as the live one, and takes a reference to
    /// it. Call RoamscanOptions::cleanUp() afterwards to create the library's own options.
    /// @param options a container on which init() was called
    /// @throws oV::InternalErrorException if the singleton already exists, which is then unchanged; `options`
    ///     is destroyed if it has no other reference
    static void setup(RoamscanOptionsCont* options);
};

} // namespace oV::Roamscan
