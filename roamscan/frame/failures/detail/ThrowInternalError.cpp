#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/detail/ThrowInternalError.h>

namespace oV::Roamscan::detail
{

using Bv_1_1::String;

void throwInternalError(wchar_t const* message, char const* function, char const* file, unsigned int line)
{
    String const fileText = String::fromNarrow(file);
    String const functionText = String::fromNarrow(function);
    String const messageText(message);
    throw InternalErrorException(messageText, functionText, fileText, line);
}

} // namespace oV::Roamscan::detail
