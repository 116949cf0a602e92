#include <roamscan/frame/failures/VisibleException.h>

namespace oV
{

using Bv_1_1::String;

namespace
{

// "title: second: message: explanation: last [code 18]", without empty parts.
String headlineOf(String const& title,
                  String const& second,
                  String const& message,
                  ExceptionStringExtractor* extractor,
                  int code,
                  String const& last)
{
    String const explanation = extractor == nullptr ? String::NIL : extractor->extractString(code);
    String headline;
    for (String const* const part : {&title, &second, &message, &explanation, &last}) {
        if (!part->text().empty()) {
            headline << (headline.isNil() ? L"" : L": ") << *part;
        }
    }
    headline << (headline.isNil() ? L"[code " : L" [code ") << code << L"]";
    return headline;
}

} // namespace

VisibleException::VisibleException(String const& title,
                                   String const& second,
                                   String const& function,
                                   String const& file,
                                   unsigned int line,
                                   ExceptionStringExtractor* extractor,
                                   int code,
                                   String const& message,
                                   String const& last)
    : ThrowableException(
          message, function, file, line, title, headlineOf(title, second, message, extractor, code, last)),
      code_(code)
{}

VisibleException::VisibleException(VisibleException const& other) noexcept = default;
VisibleException& VisibleException::operator=(VisibleException const& other) noexcept = default;
VisibleException::~VisibleException() = default;

// Overridden, because the virtual table of this class must have its own entry for this function.
char const* VisibleException::what() const noexcept
{
    return ThrowableException::what();
}

String VisibleException::extractMessage() const
{
    String message = getDesc();
    return message.text().empty() ? title() : message;
}

String VisibleException::getTitle() const
{
    return title();
}

int VisibleException::getCode() const noexcept
{
    return static_cast<int>(code_);
}

} // namespace oV
