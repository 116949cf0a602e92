#include <roamscan/frame/attributes/AccessibleInterface.h>

namespace oV
{

bool AccessibleInterface::isAccessible() const
{
    return true;
}

bool AccessibleInterface::makeAccessible()
{
    return true;
}

} // namespace oV
