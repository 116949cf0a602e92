#include "tools/io/LineReader.h"

#include "tools/console/ToolError.h"

#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

LineReader::LineReader(std::istream& text, std::filesystem::path name)
    : text_(text), name_(std::move(name)), buffer_(longestLine + 3) // with CR, LF and the terminating zero
{}

bool LineReader::next(std::string_view& line)
{
    if (text_.eof()) {
        return false;
    }
    text_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (text_.bad()) {
        throw fileError(name_, "cannot be read beyond line " + std::to_string(number_));
    }
    auto length = static_cast<std::size_t>(text_.gcount());
    if (text_.eof() && length == 0) {
        return false;
    }
    ++number_;
    if (!text_.eof() && !text_.fail()) {
        --length; // gcount() includes the end of the line
    }
    if (length > 0 && buffer_[length - 1] == '\r') {
        --length;
    }
    if ((text_.fail() && !text_.eof()) || length > longestLine) {
        throw lineError(name_, number_, "the line is longer than 64 KiB; is this a text file?");
    }
    line = std::string_view(buffer_.data(), length);
    if (number_ == 1 && line.substr(0, byteOrderMark.size()) == byteOrderMark) {
        line.remove_prefix(byteOrderMark.size());
    }
    return true;
}

} // namespace oV::Roamscan::tool
