#pragma once

namespace oV::Roamscan::TimeConversion::detail
{

/// Ticks of integer time in a tick of Txm time. Computed once when the library is loaded.
extern int const integerTicksPerTxmTick;

} // namespace oV::Roamscan::TimeConversion::detail
