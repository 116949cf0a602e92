#include <roamscan/frame/failures/detail/ThrowInternalError.h>
#include <roamscan/frame/formats/ModelOutFormat.h>
#include <roamscan/frame/formats/detail/ValueText.h>

#include <ostream>
#include <string>

namespace oV
{

namespace
{

constexpr std::size_t indentWidth = 4;

} // namespace

ModelOutFormat::ModelOutFormat(std::ostream* stream, ModelFormat::Format format) noexcept
    : stream_(stream), format_(format)
{}

bool ModelOutFormat::good() const
{
    return stream_ != nullptr && stream_->good();
}

void ModelOutFormat::startValue(Bv_1_1::String const& keyword)
{
    if (!detail::isKeyword(keyword)) {
        Roamscan::detail::throwInternalError(L"A keyword is missing or is the end of a block.",
                                             "oV::ModelOutFormat::startValue",
                                             __FILE__,
                                             __LINE__);
    }
    if (!isBare()) {
        write(indentation() + detail::textOfKeyword(keyword));
    }
}

void ModelOutFormat::endValue()
{
    if (!isBare()) {
        write(";\n");
    }
}

void ModelOutFormat::startBlock()
{
    if (depth_ >= ModelFormat::maxDepth) {
        Roamscan::detail::throwInternalError(
            L"Too many blocks are open.", "oV::ModelOutFormat::startBlock", __FILE__, __LINE__);
    }
    write(isBare() ? "{\n" : " {\n");
    ++depth_;
}

void ModelOutFormat::endBlock()
{
    if (depth_ == 0) {
        Roamscan::detail::throwInternalError(
            L"No block is open.", "oV::ModelOutFormat::endBlock", __FILE__, __LINE__);
    }
    --depth_;
    write(indentation() + "}\n");
}

void ModelOutFormat::putKept(KeptText const& kept)
{
    std::string const text = kept.inFormat(format_).text();
    bool const followsBlank = !isBare() && text != ";";
    write((followsBlank ? " " : "") + text + "\n");
}

void ModelOutFormat::putText(std::string const& text)
{
    write(isBare() ? text + '\n' : ' ' + text);
}

bool ModelOutFormat::isBare() const noexcept
{
    return format_ == ModelFormat::Format::Bare;
}

std::string ModelOutFormat::indentation() const
{
    return std::string(isBare() ? 0 : indentWidth * static_cast<std::size_t>(depth_), ' ');
}

void ModelOutFormat::write(std::string_view text)
{
    if (stream_ != nullptr) {
        stream_->write(text.data(), static_cast<std::streamsize>(text.size()));
    }
}

} // namespace oV
