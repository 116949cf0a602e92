#pragma once

#include <roamscan/frame/failures/IntException.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Thrown when the contract of a function is violated.
class ROAMSCAN_EXPORT InternalErrorException : public IntException
{
public:
    /// @param message what went wrong
    /// @param function the qualified name of the function that throws
    /// @param file the source: a file name or a component name
    /// @param line the line in that source
    InternalErrorException(Bv_1_1::String const& message,
                           Bv_1_1::String const& function,
                           Bv_1_1::String const& file,
                           unsigned int line);
    InternalErrorException(InternalErrorException const& other) noexcept;
    InternalErrorException& operator=(InternalErrorException const& other) noexcept;
    ~InternalErrorException() override;
};

} // namespace oV
