#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV::Roamscan
{

class RoamscanOptionsCont;

/// The host's way to bring the options up. Plug-ins do not need it.
class ROAMSCAN_EXPORT RoamscanOptionsHost
{
public:
    RoamscanOptionsHost() = delete;

    /// Makes the container the live one, and shares it. Pass a container on which init() was called, then
    /// call RoamscanOptions::cleanUp() to create the library's own options.
    /// @throws oV::InternalErrorException if the options are up already: they stay as they are, and a
    /// container that nobody else holds is destroyed
    static void setup(RoamscanOptionsCont* options);
};

} // namespace oV::Roamscan
