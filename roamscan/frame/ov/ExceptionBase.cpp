#include <roamscan/frame/ov/ExceptionBase.h>

namespace oV
{

ExceptionBase::~ExceptionBase() = default;

} // namespace oV
