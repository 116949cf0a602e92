#include <roamscan/frame/attributes/ModifiedListener.h>

namespace oV
{

ModifiedListener::ModifiedListener() noexcept = default;
ModifiedListener::~ModifiedListener() = default;

} // namespace oV
