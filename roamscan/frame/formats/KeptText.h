#pragma once

#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

#include <string>
#include <utility>

namespace oV
{

/// Text of an unknown element of the input, kept so that it can be written again: the rest of a statement
/// with its ";" or its block, or one item of the bare form. It is well-formed. ModelInFormat::keepRest()
/// creates it, and ModelOutFormat::putKept() writes it.
class KeptText
{
public:
    /// The bytes as they were read, without surrounding blank space.
    [[nodiscard]] std::string const& text() const noexcept { return text_; }

    /// The form of the text.
    [[nodiscard]] ModelFormat::Format format() const noexcept { return format_; }

    /// Converts the text to another form. Of a block, only its value is converted: the values of the bare
    /// block are those of the statement with ModelFormat::valueKeyword in the keyed block. Its other contents
    /// are lost. A bare text is one item, so a keyed statement without a block and with no value or several
    /// becomes a block.
    [[nodiscard]] ROAMSCAN_EXPORT KeptText inFormat(ModelFormat::Format format) const;

private:
    friend class ModelInFormat;

    KeptText(std::string text, ModelFormat::Format format) : text_(std::move(text)), format_(format) {}

    std::string text_;
    ModelFormat::Format format_;
};

} // namespace oV
