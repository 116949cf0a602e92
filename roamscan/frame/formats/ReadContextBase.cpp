#include <roamscan/frame/formats/ReadContextBase.h>

namespace oV
{

ReadContextBase::~ReadContextBase() = default;

} // namespace oV
