#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Converts the code of a failure to text.
class ROAMSCAN_EXPORT ExceptionStringExtractor
{
public:
    virtual ~ExceptionStringExtractor();

    /// The text for `code`; NIL if there is none.
    [[nodiscard]] virtual Bv_1_1::String extractString(int code) = 0;

protected:
    ExceptionStringExtractor() noexcept = default;
    ExceptionStringExtractor(ExceptionStringExtractor const& other) noexcept = default;
    ExceptionStringExtractor& operator=(ExceptionStringExtractor const& other) noexcept = default;
};

} // namespace oV
