#include <roamscan/frame/failures/IntException.h>

namespace oV
{

IntException::IntException(Bv_1_1::String const& message,
                           Bv_1_1::String const& function,
                           Bv_1_1::String const& file,
                           unsigned int line)
    : ThrowableException(message, function, file, line)
{}

IntException::IntException(IntException const& other) noexcept = default;
IntException& IntException::operator=(IntException const& other) noexcept = default;
IntException::~IntException() = default;

} // namespace oV
