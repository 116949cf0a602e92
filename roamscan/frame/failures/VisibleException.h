#pragma once

#include <roamscan/frame/failures/ExceptionBase.h>
#include <roamscan/frame/failures/ExceptionStringExtractor.h>
#include <roamscan/frame/failures/ThrowableException.h>
#include <roamscan/frame/platform/Export.h>

#include <cstdint>

namespace oV
{

/// A failure that users may see: it has a title and a code beside its message.
class ROAMSCAN_EXPORT VisibleException : public ThrowableException, public ExceptionBase
{
public:
    /// `title` names the kind of failure, `message` says what went wrong and is the description. `second` and
    /// `last` are further text; they and the words of the extractor for `code` appear in what() alone. The
    /// extractor may be null. It is asked once, before the constructor returns, and is not kept.
    VisibleException(Bv_1_1::String const& title,
                     Bv_1_1::String const& second,
                     Bv_1_1::String const& function,
                     Bv_1_1::String const& file,
                     unsigned int line,
                     ExceptionStringExtractor* extractor,
                     int code,
                     Bv_1_1::String const& message,
                     Bv_1_1::String const& last);
    VisibleException(VisibleException const& other) noexcept;
    VisibleException& operator=(VisibleException const& other) noexcept;
    ~VisibleException() override;

    /// One line of narrow text, never null or empty: title, further text, message, code and place. It is
    /// valid while this failure or a copy of it lives.
    [[nodiscard]] char const* what() const noexcept override;

    /// The message, or the title where there is no message.
    [[nodiscard]] Bv_1_1::String extractMessage() const override;

    /// The kind of failure in words.
    [[nodiscard]] Bv_1_1::String getTitle() const;

    /// The kind of failure as a number.
    [[nodiscard]] int getCode() const noexcept;

private:
    std::int64_t code_; // eight bytes wide in the binary interface
};

} // namespace oV
