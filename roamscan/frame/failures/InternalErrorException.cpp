#include <roamscan/frame/failures/InternalErrorException.h>

namespace oV
{

InternalErrorException::InternalErrorException(Bv_1_1::String const& message,
                                               Bv_1_1::String const& function,
                                               Bv_1_1::String const& file,
                                               unsigned int line)
    : IntException(message, function, file, line)
{}

InternalErrorException::InternalErrorException(InternalErrorException const& other) noexcept = default;
InternalErrorException&
InternalErrorException::operator=(InternalErrorException const& other) noexcept = default;
InternalErrorException::~InternalErrorException() = default;

} // namespace oV
