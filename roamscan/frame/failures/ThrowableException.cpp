#include <roamscan/frame/failures/ThrowableException.h>

namespace oV
{

using Bv_1_1::String;

namespace
{

// "headline (function, file:line)", without empty parts.
String summaryOf(String const& headline, String const& function, String const& file, unsigned int line)
{
    String summary = headline.text().empty() ? String(L"Failure without a description") : headline;
    wchar_t const* separator = L" (";
    if (!function.text().empty()) {
        summary << separator << function;
        separator = L", ";
    }
    if (!file.text().empty()) {
        summary << separator << file << L":" << static_cast<unsigned long long>(line);
    }
    if (!function.text().empty() || !file.text().empty()) {
        summary << L")";
    }
    return summary;
}

} // namespace

ThrowableException::ThrowableException(String const& description,
                                       String const& function,
                                       String const& file,
                                       unsigned int line)
    : ThrowableException(description, function, file, line, String::NIL, description)
{}

ThrowableException::ThrowableException(String const& description,
                                       String const& function,
                                       String const& file,
                                       unsigned int line,
                                       String const& title,
                                       String const& headline)
    : description_(description),
      function_(function),
      file_(file),
      title_(title),
      summary_(summaryOf(headline, function, file, line)),
      line_(line)
{
    static_cast<void>(summary_.stringAnsi());
}

ThrowableException::ThrowableException(ThrowableException const& other) noexcept = default;
ThrowableException& ThrowableException::operator=(ThrowableException const& other) noexcept = default;
ThrowableException::~ThrowableException() = default;

char const* ThrowableException::what() const noexcept
{
    return summary_.stringAnsi();
}

// NOLINTNEXTLINE(readability-const-return-type): part of the interface
String const ThrowableException::getDesc() const
{
    return description_;
}

String ThrowableException::getFunction() const
{
    return function_;
}

String ThrowableException::getFile() const
{
    return file_;
}

unsigned int ThrowableException::getLine() const noexcept
{
    return line_;
}

} // namespace oV
