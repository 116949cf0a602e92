#pragma once

#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

#include <string>
#include <utility>

namespace oV
{

/// Text that a reader did not understand and kept, to be written again: the rest of a statement with its
/// ";" or its block, or one item of the bare form. It is well-formed. ModelInFormat::keepRest() makes it,
/// ModelOutFormat::putKept() writes it.
class KeptText
{
public:
    /// The bytes as they were read, without blank space around them.
    [[nodiscard]] std::string const& text() const noexcept { return text_; }

    /// The form that the text was read in.
    [[nodiscard]] ModelFormat::Format format() const noexcept { return format_; }

    /// The same in another form. A block keeps its value: the values of the bare block are those of the
    /// statement with ModelFormat::valueKeyword in the keyed block. What else the block holds is left out.
    [[nodiscard]] ROAMSCAN_EXPORT KeptText inFormat(ModelFormat::Format format) const;

private:
    friend class ModelInFormat;

    KeptText(std::string text, ModelFormat::Format format) : text_(std::move(text)), format_(format) {}

    std::string text_;
    ModelFormat::Format format_;
};

} // namespace oV
