/// @file
/// The namespace-scope objects of oV::Roamscan that are set up when the library is loaded, in the order in
/// which they come up. They stand in one file because the language fixes the order only within one.

#include <roamscan/time/detail/TickRatio.h>

#include <cmath>

namespace oV::Roamscan::TimeConversion::detail
{

int const integerTicksPerTxmTick = static_cast<int>(std::round(100.0));

} // namespace oV::Roamscan::TimeConversion::detail
