#pragma once

#include <roamscan/sensors/SensorData.h>

#include <cstdint>

namespace oV::Roamscan::detail
{

/// @return an upper bound of the buffer's size in which `store` is written, at most
///         FlatBufferSize::allowance bytes above it
[[nodiscard]] std::uint64_t bufferSizeBound(SensorData const& store);

} // namespace oV::Roamscan::detail
