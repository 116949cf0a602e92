#include <roamscan/frame/values/Endianness.h>

#include <bit>

namespace oV
{

constinit std::atomic<bool> Endianness::bigEndian = std::endian::native == std::endian::big;

} // namespace oV
