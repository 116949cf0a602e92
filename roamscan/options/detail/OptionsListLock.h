#pragma once

#include <roamscan/frame/bvbase/CriticalSection.h>

namespace oV::Roamscan::detail
{

/// Held around every write of the two lists of an options container. It is taken after RoamscanOptions's own
/// lock, never before it. Set up when the library is loaded.
extern Bv_1_1::CriticalSection optionsListLock;

} // namespace oV::Roamscan::detail
