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

/// Writes the text forms of ModelFormat. WriteToScope makes it; DataOutFormat writes the values.
///
///     startValue(keyword), values, endValue()                              keyword values;
///     startValue(keyword), values, startBlock(), statements, endBlock()    keyword values { statements }
///
/// In the bare form the same calls leave the keyword and the ";" out. A write that fails shows in the state
/// of the stream and in good(); exceptions enabled on the stream pass through.
class ROAMSCAN_EXPORT ModelOutFormat
{
public:
    /// @param stream may be null; it must outlive this object
    ModelOutFormat(std::ostream* stream, ModelFormat::Format format) noexcept;

    ModelOutFormat(ModelOutFormat const&) = delete;
    ModelOutFormat& operator=(ModelOutFormat const&) = delete;

    /// The form that is written.
    [[nodiscard]] ModelFormat::Format format() const noexcept { return format_; }

    /// Whether there is a stream and its state is clean.
    [[nodiscard]] bool good() const;

    /// Begins a statement.
    /// @throws InternalErrorException if the keyword is NIL, empty or the end of a block; also in the bare
    /// form
    void startValue(Bv_1_1::String const& keyword);

    /// Ends a statement that has no block.
    void endValue();

    /// Begins the block of a statement.
    /// @throws InternalErrorException if ModelFormat::maxDepth blocks are open
    void startBlock();

    /// Ends the block, and with it the statement.
    /// @throws InternalErrorException if no block is open
    void endBlock();

    /// Writes what a reader kept, in place of the rest of a statement with its endValue() or endBlock().
    ///
    /// Text of the same form comes out byte for byte. Between the forms, a block keeps its value: the values
    /// of the bare block are those of the statement with ModelFormat::valueKeyword in the keyed block.
    /// Statements with other keywords have no place in the bare form and are left out.
    void putKept(KeptText const& kept);

private:
    template <typename T>
    friend class DataOutFormat;

    /// Writes the text of a value.
    void putText(std::string const& text);
    void write(std::string_view text);
    [[nodiscard]] bool isBare() const noexcept;
    [[nodiscard]] std::string indentation() const;

    std::ostream* stream_;
    ModelFormat::Format format_;
    int depth_ = 0;
};

} // namespace oV
