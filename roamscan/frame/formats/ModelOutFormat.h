#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeptText.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

#include <iosfwd>
#include <string>
#include <string_view>

namespace oV
{

/// Writes the text forms of ModelFormat. WriteToScope creates it; DataOutFormat writes the values. The calls,
/// and the text that they write in the keyed form:
///
///     startValue(keyword), values, endValue()                              keyword values;
///     startValue(keyword), values, startBlock(), statements, endBlock()    keyword values { statements }
///
/// In the bare form, the same calls write neither keyword nor ";". After a failed write, good() is false.
/// Exceptions enabled on the stream pass through.
class ROAMSCAN_EXPORT ModelOutFormat
{
public:
    /// @param stream must outlive this object; if null, nothing is written and good() is false
    /// @param format the form to write
    ModelOutFormat(std::ostream* stream, ModelFormat::Format format) noexcept;

    ModelOutFormat(ModelOutFormat const&) = delete;
    ModelOutFormat& operator=(ModelOutFormat const&) = delete;

    /// The form of the text.
    [[nodiscard]] ModelFormat::Format format() const noexcept { return format_; }

    /// Whether there is a stream and it is good.
    [[nodiscard]] bool good() const;

    /// Begins a statement.
    /// @throws InternalErrorException if the keyword is NIL, empty or the end of a block, in both forms
    void startValue(Bv_1_1::String const& keyword);

    /// Ends a statement without a block.
    void endValue();

    /// Begins the block of a statement.
    /// @throws InternalErrorException if ModelFormat::maxDepth blocks are already open
    void startBlock();

    /// Ends the block and its statement.
    /// @throws InternalErrorException if no block is open
    void endBlock();

    /// Writes a kept text as the rest of a statement, after startValue() and its first values. It replaces
    /// the call of endValue() or endBlock(). Text of the same form is written byte for byte; other text is
    /// converted by KeptText::inFormat().
    void putKept(KeptText const& kept);

private:
    template <typename T>
    friend class DataOutFormat;

    /// Writes the text of a value.
    ROAMSCAN_NO_EXPORT void putText(std::string const& text);
    ROAMSCAN_NO_EXPORT void write(std::string_view text);
    [[nodiscard]] ROAMSCAN_NO_EXPORT bool isBare() const noexcept;
    [[nodiscard]] ROAMSCAN_NO_EXPORT std::string indentation() const;

    std::ostream* stream_;
    ModelFormat::Format format_;
    int depth_ = 0;
};

} // namespace oV
