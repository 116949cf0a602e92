#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The interface of a failure with a message for users. It does not derive from `std::exception`.
class ROAMSCAN_EXPORT ExceptionBase
{
public:
    virtual ~ExceptionBase();

    /// The text to show to a user.
    [[nodiscard]] virtual Bv_1_1::String extractMessage() const = 0;

protected:
    ExceptionBase() noexcept = default;
    ExceptionBase(ExceptionBase const& other) noexcept = default;
    ExceptionBase& operator=(ExceptionBase const& other) noexcept = default;
};

} // namespace oV
