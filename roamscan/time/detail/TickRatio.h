#pragma once

namespace oV::Roamscan::TimeConversion::detail
{

/// Ticks of integer time per tick of Txm time: 100. Computed when the library is loaded.
extern int const integerTicksPerTxmTick;

} // namespace oV::Roamscan::TimeConversion::detail
