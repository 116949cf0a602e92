#include <roamscan/frame/failures/ExceptionBase.h>

namespace oV
{

ExceptionBase::~ExceptionBase() = default;

} // namespace oV
