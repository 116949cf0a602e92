#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The side of a failure that speaks to users. It stands beside `std::exception`, not under it.
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
