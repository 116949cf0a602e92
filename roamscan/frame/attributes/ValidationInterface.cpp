#include <roamscan/frame/attributes/ValidationInterface.h>

namespace oV
{

bool ValidationInterface::isValid() const
{
    return true;
}

bool ValidationInterface::makeValid()
{
    return true;
}

} // namespace oV
