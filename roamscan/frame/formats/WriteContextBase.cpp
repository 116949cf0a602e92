#include <roamscan/frame/formats/WriteContextBase.h>

namespace oV
{

WriteContextBase::~WriteContextBase() = default;

} // namespace oV
