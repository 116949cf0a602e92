#pragma once

#include <roamscan/frame/failures/ExceptionBase.h>
#include <roamscan/frame/failures/ExceptionStringExtractor.h>
#include <roamscan/frame/failures/ThrowableException.h>
#include <roamscan/frame/platform/Export.h>

#include <cstdint>

namespace oV
{

/// A failure that may be shown to users. It has a message, a title and a code.
class ROAMSCAN_EXPORT VisibleException : public ThrowableException, public ExceptionBase
{
public:
    /// @param title the kind of failure
    /// @param second further text, used only in what()
    /// @param function the qualified name of the function that throws
    /// @param file the source: a file name or a component name
    /// @param line the line in that source
    /// @param extractor converts `code` to text, which is used only in what(); called once, by this
    ///     constructor; may be null
    /// @param code the kind of failure as a number
    /// @param message what went wrong; the description of the failure
    /// @param last further text, used only in what()
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

    /// Title, further text, message, code and source location in one line of narrow text; never null or
    /// empty. Valid while this failure or a copy of it exists.
    [[nodiscard]] char const* what() const noexcept override;

    /// The message, or the title if there is no message.
    [[nodiscard]] Bv_1_1::String extractMessage() const override;

    /// The kind of failure as text.
    [[nodiscard]] Bv_1_1::String getTitle() const;

    /// The kind of failure as a number.
    [[nodiscard]] int getCode() const noexcept;

private:
    std::int64_t code_; // 64 bits wide: part of the binary interface
};

} // namespace oV
