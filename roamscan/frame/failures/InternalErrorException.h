#pragma once

#include <roamscan/frame/failures/IntException.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The failure of a broken contract.
class ROAMSCAN_EXPORT InternalErrorException : public IntException
{
public:
    /// `message` says what went wrong, `function` is the qualified name of the function that noticed, `file`
    /// and `line` are its source and the line in it.
    InternalErrorException(Bv_1_1::String const& message,
                           Bv_1_1::String const& function,
                           Bv_1_1::String const& file,
                           unsigned int line);
    InternalErrorException(InternalErrorException const& other) noexcept;
    InternalErrorException& operator=(InternalErrorException const& other) noexcept;
    ~InternalErrorException() override;
};

} // namespace oV
