#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeptText.h>
#include <roamscan/frame/formats/ModelInFormat.h>

#include <sstream>
#include <string_view>

namespace oV
{

namespace
{

constexpr char startOfBlock = '{';

// Advances to the statement with the value in the block that was just entered, or to the end of the block.
void findValue(ModelInFormat& in)
{
    Bv_1_1::String const value(ModelFormat::valueKeyword);
    Bv_1_1::String const endOfBlock = ModelInFormat::endOfBlock();
    while (in.status() == StatusCode::ok && in.getKeyword() != value && in.getKeyword() != endOfBlock) {
        in.nextKeyword();
    }
}

} // namespace

KeptText KeptText::inFormat(ModelFormat::Format format) const
{
    bool const isBare = format_ == ModelFormat::Format::Bare;
    bool const becomesBare = format == ModelFormat::Format::Bare;
    if (isBare == becomesBare) {
        return *this;
    }
    std::istringstream stream(text_);
    ModelInFormat in(&stream, format_);
    bool const isBlock = text_.starts_with(startOfBlock);
    if (isBlock && in.startBlock()) {
        findValue(in);
    }
    std::string values;
    int count = 0;
    for (; in.hasValue(); ++count) {
        values += values.empty() ? "" : (becomesBare ? "\n" : " ");
        values += in.keepValue();
    }
    if (becomesBare) {
        bool const isOneItem = !isBlock && count == 1;
        return {isOneItem ? values : "{\n" + values + (values.empty() ? "}" : "\n}"), format};
    }
    if (!isBlock) {
        return {values + ";", format};
    }
    return {values.empty() ? "{}" : "{ value " + values + "; }", format};
}

} // namespace oV
