#pragma once

#include <roamscan/frame/failures/ThrowableException.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The base of internal failures. Their messages are for programmers, not for users.
class ROAMSCAN_EXPORT IntException : public ThrowableException
{
public:
    IntException(IntException const& other) noexcept;
    IntException& operator=(IntException const& other) noexcept;
    ~IntException() override;

protected:
    /// A failure with a message and the source location that throws it.
    IntException(Bv_1_1::String const& message,
                 Bv_1_1::String const& function,
                 Bv_1_1::String const& file,
                 unsigned int line);
};

} // namespace oV
