#include <roamscan/frame/failures/detail/IOCodeException.h>

namespace oV::Roamscan
{

using Bv_1_1::String;

IOCodeException::IOCodeException(
    String const& function, String const& file, unsigned int line, int ioCode, String const& message)
    : VisibleException(
          L"IOCode-Exception", String::EMPTY, function, file, line, nullptr, ioCode, message, String::EMPTY),
      ioCode_(ioCode)
{}

IOCodeException::IOCodeException(IOCodeException const& other) noexcept = default;
IOCodeException& IOCodeException::operator=(IOCodeException const& other) noexcept = default;
IOCodeException::~IOCodeException() = default;

} // namespace oV::Roamscan
