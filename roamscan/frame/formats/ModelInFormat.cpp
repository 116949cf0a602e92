#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/detail/ValueText.h>

#include <array>
#include <exception>
#include <istream>
#include <streambuf>
#include <utility>

namespace oV
{

namespace
{

constexpr int endOfInput = std::char_traits<char>::eof();
constexpr int startOfBlockByte = '{';
constexpr int endOfBlockByte = ModelFormat::END_OF_BLOCK;
constexpr int endOfValueByte = ';';

bool isBlank(int byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

} // namespace

ModelInFormat::ModelInFormat(std::istream* stream, ModelFormat::Format format) : format_(format)
{
    if (stream == nullptr || stream->fail() || stream->rdbuf() == nullptr) {
        fail(StatusCode::readFailed);
    } else {
        bytes_ = stream->rdbuf();
    }
}

Bv_1_1::String ModelInFormat::endOfBlock()
{
    constexpr std::array<wchar_t, 2> text = {ModelFormat::END_OF_BLOCK, L'\0'};
    return text.data();
}

void ModelInFormat::fail(int status) noexcept
{
    if (status_ == StatusCode::ok) {
        status_ = status;
    }
}

// Keywords.

Bv_1_1::String const& ModelInFormat::getKeyword()
{
    if (current_ == Current::None && status_ == StatusCode::ok) {
        if (isBare()) {
            readBareKeyword();
        } else {
            readKeyword();
        }
    }
    return status_ == StatusCode::ok ? keyword_ : Bv_1_1::String::EMPTY;
}

void ModelInFormat::readKeyword()
{
    int const byte = peekToken();
    if (byte == endOfInput && depth_ == 0) {
        keyword_ = Bv_1_1::String::NIL;
    } else if (byte == endOfBlockByte) {
        take();
        keyword_ = endOfBlock();
        current_ = Current::EndOfBlock;
    } else {
        keyword_ = readKeywordToken();
        current_ = Current::Statement;
    }
}

void ModelInFormat::readBareKeyword()
{
    int const byte = peekToken();
    if (byte == endOfBlockByte) {
        take();
        keyword_ = endOfBlock();
        current_ = Current::EndOfBlock;
    } else if (byte == endOfInput && depth_ > 0) {
        fail(StatusCode::unexpectedEnd);
    } else if (byte == endOfInput || scope_.bareValueFound) {
        keyword_ = Bv_1_1::String::NIL;
    } else {
        keyword_ = ModelFormat::valueKeyword;
        current_ = Current::Statement;
        scope_.bareValueFound = true;
    }
}

void ModelInFormat::nextKeyword()
{
    if (current_ == Current::Statement) {
        skipRest();
    } else if (current_ == Current::EndOfBlock && depth_ > 0) {
        --depth_;
    }
    current_ = Current::None;
}

void ModelInFormat::setPropagateKeyword(Bv_1_1::String const& keyword)
{
    scope_.propagated = keyword;
}

bool ModelInFormat::startBlock()
{
    while (!isBare() && hasValue()) {
        skipValue();
    }
    int const byte = peekToken();
    if (byte != startOfBlockByte) {
        failAt(byte, StatusCode::wrongKind);
        return false;
    }
    takeStartOfBlock(0);
    if (status_ != StatusCode::ok) {
        return false;
    }
    ++depth_;
    current_ = Current::None;
    return true;
}

std::optional<KeptText> ModelInFormat::keepRest()
{
    std::string text = keep([this] { skipRest(); });
    current_ = current_ == Current::Statement ? Current::Finished : current_;
    return status_ == StatusCode::ok ? std::optional(KeptText(std::move(text), format_)) : std::nullopt;
}

// Scopes.

ModelInFormat::ScopeState ModelInFormat::openScope()
{
    ScopeState inner;
    inner.beganAtEndOfBlock = current_ == Current::EndOfBlock;
    return std::exchange(scope_, std::move(inner));
}

void ModelInFormat::closeScope(ScopeState outer)
{
    ScopeState const inner = std::exchange(scope_, std::move(outer));
    if (!inner.propagated) {
        if (current_ == Current::EndOfBlock && !inner.beganAtEndOfBlock) {
            nextKeyword();
        }
    } else if (current_ == Current::None || keyword_ != *inner.propagated) {
        nextKeyword();
        keyword_ = *inner.propagated;
        current_ = Current::Finished;
    }
}

// Values.

bool ModelInFormat::hasValue()
{
    int const byte = peekToken();
    return byte != endOfInput && byte != endOfValueByte && byte != startOfBlockByte && byte != endOfBlockByte;
}

std::optional<std::string> ModelInFormat::getWord()
{
    int const byte = beginValue();
    if (!detail::isOfWord(byte)) {
        failAt(byte, StatusCode::wrongKind);
        return std::nullopt;
    }
    std::string word = readWord(detail::isOfWord);
    return status_ == StatusCode::ok ? std::optional(std::move(word)) : std::nullopt;
}

std::optional<Bv_1_1::String> ModelInFormat::getText()
{
    if (beginValue() == '"') {
        return readString();
    }
    std::optional<std::string> const word = getWord();
    if (!word) {
        return std::nullopt;
    }
    if (*word != "null") {
        fail(StatusCode::wrongKind);
        return std::nullopt;
    }
    return Bv_1_1::String::NIL;
}

bool ModelInFormat::startList()
{
    int const byte = beginValue();
    if (byte != '[') {
        failAt(byte, StatusCode::wrongKind);
        return false;
    }
    take();
    return true;
}

bool ModelInFormat::nextElement(bool isFirst)
{
    int const byte = peekToken();
    if (byte == ']') {
        take();
        return false;
    }
    if (isFirst) {
        return status_ == StatusCode::ok;
    }
    if (byte != ',') {
        failAt(byte, StatusCode::syntaxError);
        return false;
    }
    take();
    return true;
}

int ModelInFormat::beginValue()
{
    if (isBare() && current_ == Current::Statement) {
        current_ = Current::Finished; // its only value
    }
    return peekToken();
}

// What is not read.

void ModelInFormat::skipRest()
{
    if (isBare()) {
        skipBareItem();
    } else {
        skipStatement();
    }
}

// From behind a keyword to the end of its statement.
void ModelInFormat::skipStatement()
{
    int open = 0;
    bool isInStatement = true;
    do {
        int const byte = peekToken();
        if (isInStatement && byte == startOfBlockByte) {
            takeStartOfBlock(open++);
            isInStatement = false;
        } else if (isInStatement && byte == endOfValueByte) {
            take();
            isInStatement = false;
        } else if (isInStatement) {
            skipValue();
        } else if (byte == endOfBlockByte) {
            take();
            --open;
        } else {
            (void)readKeywordToken();
            isInStatement = true;
        }
    } while (status_ == StatusCode::ok && (isInStatement || open > 0));
}

void ModelInFormat::skipBareItem()
{
    int open = 0;
    do {
        int const byte = peekToken();
        if (byte == startOfBlockByte) {
            takeStartOfBlock(open++);
        } else if (byte == endOfBlockByte && open > 0) {
            take();
            --open;
        } else {
            skipValue();
        }
    } while (status_ == StatusCode::ok && open > 0);
}

void ModelInFormat::takeStartOfBlock(int alsoOpen)
{
    if (depth_ + alsoOpen >= ModelFormat::maxDepth) {
        fail(StatusCode::tooDeep);
    } else {
        take();
    }
}

void ModelInFormat::skipValue()
{
    int const byte = peekToken();
    if (byte == '"') {
        (void)readString();
    } else if (byte == '[') {
        skipList();
    } else if (detail::isOfWord(byte)) {
        (void)readWord(detail::isOfWord);
    } else {
        failAt(byte, StatusCode::syntaxError);
    }
}

void ModelInFormat::skipList()
{
    take();
    for (bool isFirst = true; nextElement(isFirst); isFirst = false) {
        (void)getText();
    }
}

std::string ModelInFormat::keepValue()
{
    return keep([this] { skipValue(); });
}

template <typename Read>
std::string ModelInFormat::keep(Read const& read)
{
    (void)peekToken(); // blank space before it is not kept
    std::string text;
    kept_ = &text;
    read();
    kept_ = nullptr;
    return text;
}

// Tokens.

Bv_1_1::String ModelInFormat::readKeywordToken()
{
    int const byte = peekToken();
    if (detail::beginsKeyword(byte)) {
        std::string const word = readWord(detail::continuesKeyword);
        return Bv_1_1::String::fromUtf16(std::u16string(word.begin(), word.end()));
    }
    if (byte != '"') {
        failAt(byte, StatusCode::syntaxError);
        return {};
    }
    Bv_1_1::String keyword = readString().value_or(Bv_1_1::String::EMPTY);
    if (keyword == Bv_1_1::String::EMPTY || keyword == endOfBlock()) {
        fail(StatusCode::syntaxError);
    }
    return keyword;
}

std::string ModelInFormat::readWord(bool (*continues)(int) noexcept)
{
    std::string word;
    while (continues(peek())) {
        word.push_back(static_cast<char>(take()));
    }
    return word;
}

std::optional<Bv_1_1::String> ModelInFormat::readString()
{
    constexpr int firstPrintable = 0x20;
    std::u16string units;
    std::string utf8; // up to the next escape
    take();
    for (;;) {
        int const byte = peek();
        if (byte == endOfInput || byte < firstPrintable) {
            failAt(byte, StatusCode::syntaxError);
            return std::nullopt;
        }
        take();
        if (byte != '"' && byte != '\\') {
            utf8.push_back(static_cast<char>(byte));
            continue;
        }
        if (!detail::appendUtf8(utf8, units)) {
            fail(StatusCode::syntaxError);
            return std::nullopt;
        }
        utf8.clear();
        if (byte == '"') {
            return units.empty() ? Bv_1_1::String::EMPTY : Bv_1_1::String::fromUtf16(units);
        }
        if (!readEscape(units)) {
            return std::nullopt;
        }
    }
}

// From behind the backslash.
bool ModelInFormat::readEscape(std::u16string& units)
{
    constexpr std::string_view letters = "\"\\nrt";
    constexpr std::u16string_view meanings = u"\"\\\n\r\t";
    int byte = take();
    if (byte != 'u') {
        auto const index =
            byte == endOfInput ? std::string_view::npos : letters.find(static_cast<char>(byte));
        if (index == std::string_view::npos) {
            failAt(byte, StatusCode::syntaxError);
            return false;
        }
        units.push_back(meanings[index]);
        return true;
    }
    int unit = 0;
    for (int digits = 0; digits < 4; ++digits) {
        byte = take();
        int const digit = detail::hexadecimalDigit(byte);
        if (digit < 0) {
            failAt(byte, StatusCode::syntaxError);
            return false;
        }
        unit = unit * 16 + digit;
    }
    units.push_back(static_cast<char16_t>(unit));
    return true;
}

void ModelInFormat::failAt(int byte, int status)
{
    fail(byte == endOfInput ? StatusCode::unexpectedEnd : status);
}

// Bytes.

int ModelInFormat::peek()
{
    if (status_ != StatusCode::ok) {
        return endOfInput;
    }
    try {
        return bytes_->sgetc();
    } catch (std::exception const&) {
        fail(StatusCode::readFailed);
        return endOfInput;
    }
}

int ModelInFormat::peekToken()
{
    while (isBlank(peek())) {
        take();
    }
    return peek();
}

int ModelInFormat::take()
{
    int const byte = peek();
    if (byte == endOfInput) {
        return byte;
    }
    bytes_->sbumpc(); // just looked at, so in the buffer
    line_ += byte == '\n' ? 1U : 0U;
    if (kept_ != nullptr) {
        kept_->push_back(static_cast<char>(byte));
    }
    return byte;
}

} // namespace oV
