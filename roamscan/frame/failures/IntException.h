#pragma once

#include <roamscan/frame/failures/ThrowableException.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// A failure that speaks to programmers, not to users.
class ROAMSCAN_EXPORT IntException : public ThrowableException
{
public:
    IntException(IntException const& other) noexcept;
    IntException& operator=(IntException const& other) noexcept;
    ~IntException() override;

protected:
    /// What went wrong, in which function, of which source component, at which line.
    IntException(Bv_1_1::String const& message,
                 Bv_1_1::String const& function,
                 Bv_1_1::String const& file,
                 unsigned int line);
};

} // namespace oV
