#include <roamscan/frame/formats/WriteToScope.h>

namespace oV
{

WriteToScope::WriteToScope(std::ostream* stream, WriteContextBase* context) : FormatScope(stream, context) {}

WriteToScope::~WriteToScope() = default;

} // namespace oV
