#include <roamscan/frame/formats/detail/TokenReader.h>

#include <exception>
#include <istream>
#include <limits>
#include <streambuf>
#include <string_view>
#include <utility>

namespace oV::detail
{

namespace
{

static_assert(TokenReader::endOfInput == std::char_traits<char>::eof());

bool isBlank(int byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

// Whether the byte may start a token that is not a word.
bool beginsOtherToken(int byte)
{
    return byte == '"' || byte == '[' || byte == ';' || byte == '{' || byte == '}';
}

} // namespace

TokenReader::TokenReader(std::istream* stream)
{
    if (stream == nullptr || stream->fail()) { // without a buffer, it has failed
        fail(StatusCode::readFailed);
    } else {
        bytes_ = stream->rdbuf();
    }
}

void TokenReader::fail(int status) noexcept
{
    if (!hasFailed()) {
        status_ = status;
    }
}

void TokenReader::failAt(int byte, int status) noexcept
{
    fail(byte == endOfInput ? StatusCode::unexpectedEnd : status);
}

int TokenReader::peek()
{
    if (hasFailed()) {
        return endOfInput;
    }
    try {
        return bytes_->sgetc();
    } catch (std::exception const&) { // as file buffers throw when the device fails
        fail(StatusCode::readFailed);
        return endOfInput;
    }
}

int TokenReader::peekToken()
{
    while (isBlank(peek())) {
        take();
    }
    return peek();
}

int TokenReader::take()
{
    int const byte = peek();
    if (byte == endOfInput) {
        return byte;
    }
    bytes_->sbumpc(); // cannot fail: the byte is already in the buffer
    line_ += byte == '\n' ? 1U : 0U;
    if (kept_ != nullptr) {
        kept_->push_back(static_cast<char>(byte));
    }
    return byte;
}

std::string TokenReader::takeWhile(bool (*isWanted)(int) noexcept)
{
    std::string text;
    while (isWanted(peek())) {
        text.push_back(static_cast<char>(take()));
    }
    return text;
}

Bv_1_1::String TokenReader::readKeyword()
{
    int const byte = peekToken();
    if (beginsKeyword(byte)) {
        std::string const word = takeWhile(continuesKeyword);
        return Bv_1_1::String::fromUtf16(std::u16string(word.begin(), word.end()));
    }
    if (byte != '"') {
        failAt(byte, StatusCode::syntaxError);
        return {};
    }
    Bv_1_1::String keyword = readString().value_or(Bv_1_1::String::NIL);
    if (!isKeyword(keyword)) {
        fail(StatusCode::syntaxError);
    }
    return keyword;
}

std::optional<std::string> TokenReader::readWord()
{
    int const byte = peekToken();
    if (!isOfWord(byte)) {
        failAt(byte, beginsOtherToken(byte) ? StatusCode::wrongKind : StatusCode::syntaxError);
        return std::nullopt;
    }
    std::string word = takeWhile(isOfWord);
    return hasFailed() ? std::nullopt : std::optional(std::move(word));
}

std::optional<Bv_1_1::String> TokenReader::readText()
{
    if (peekToken() == '"') {
        return readString();
    }
    std::optional<std::string> const word = readWord();
    if (!word) {
        return std::nullopt;
    }
    if (*word != "null") {
        fail(StatusCode::wrongKind);
        return std::nullopt;
    }
    return Bv_1_1::String::NIL;
}

std::optional<std::vector<Bv_1_1::String>> TokenReader::readTexts()
{
    int const byte = peekToken();
    if (byte != '[') {
        failAt(byte, StatusCode::wrongKind);
        return std::nullopt;
    }
    take();
    std::vector<Bv_1_1::String> texts;
    while (nextElement(texts.empty())) {
        texts.push_back(readText().value_or(Bv_1_1::String::NIL));
    }
    return hasFailed() ? std::nullopt : std::optional(std::move(texts));
}

// Whether the list has a further element. If not, consumes the end of the list.
bool TokenReader::nextElement(bool isFirst)
{
    int const byte = peekToken();
    if (byte == ']') {
        take();
        return false;
    }
    if (!isFirst && byte != ',') {
        failAt(byte, StatusCode::syntaxError);
    } else if (!isFirst) {
        take();
    }
    return !hasFailed();
}

void TokenReader::skipValue()
{
    if (peekToken() != '[') {
        skipElement();
        return;
    }
    take();
    for (bool isFirst = true; nextElement(isFirst); isFirst = false) {
        skipElement();
    }
}

void TokenReader::skipElement()
{
    int const byte = peekToken();
    if (byte == '"') {
        (void)readString();
    } else if (!isOfWord(byte)) {
        failAt(byte, StatusCode::syntaxError);
    } else if (!isValueWord(takeWhile(isOfWord))) {
        failAt(peek(), StatusCode::syntaxError);
    }
}

std::optional<Bv_1_1::String> TokenReader::readString()
{
    constexpr int firstPrintable = 0x20;
    std::u16string units;
    std::string utf8; // since the last escape
    take();
    for (;;) {
        int const byte = take();
        if (byte < firstPrintable) {
            failAt(byte, StatusCode::syntaxError);
            return std::nullopt;
        }
        if (byte != '"' && byte != '\\') {
            utf8.push_back(static_cast<char>(byte));
            continue;
        }
        if (!appendUtf8(utf8, units)) {
            fail(StatusCode::syntaxError);
            return std::nullopt;
        }
        utf8.clear();
        if (byte == '"') {
            break;
        }
        if (!readEscape(units)) {
            return std::nullopt;
        }
    }
    if (units.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        fail(StatusCode::outOfRange); // longer than the largest string
        return std::nullopt;
    }
    return units.empty() ? Bv_1_1::String::EMPTY : Bv_1_1::String::fromUtf16(units);
}

// Reads the rest of an escape sequence, after the backslash.
bool TokenReader::readEscape(std::u16string& units)
{
    constexpr std::string_view letters = R"("\nrt)";
    constexpr std::u16string_view meanings = u"\"\\\n\r\t";
    int const byte = take();
    if (byte == 'u') {
        return readCode(units);
    }
    auto const index = byte == endOfInput ? std::string_view::npos : letters.find(static_cast<char>(byte));
    if (index == std::string_view::npos) {
        failAt(byte, StatusCode::syntaxError);
        return false;
    }
    units.push_back(meanings[index]);
    return true;
}

// Reads one UTF-16 unit of four hexadecimal digits.
bool TokenReader::readCode(std::u16string& units)
{
    int unit = 0;
    for (int digits = 0; digits < 4; ++digits) {
        int const byte = take();
        int const digit = hexadecimalDigit(byte);
        if (digit < 0) {
            failAt(byte, StatusCode::syntaxError);
            return false;
        }
        unit = unit * 16 + digit;
    }
    units.push_back(static_cast<char16_t>(unit));
    return true;
}

} // namespace oV::detail
