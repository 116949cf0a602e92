#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/detail/TokenReader.h>

#include <array>
#include <utility>

namespace oV
{

namespace
{

constexpr int endOfInput = detail::TokenReader::endOfInput;
constexpr int startOfBlockByte = '{';
constexpr int endOfBlockByte = ModelFormat::END_OF_BLOCK;
constexpr int endOfValueByte = ';';

} // namespace

ModelInFormat::ModelInFormat(std::istream* stream, ModelFormat::Format format)
    : format_(format), tokens_(std::make_unique<detail::TokenReader>(stream))
{}

ModelInFormat::~ModelInFormat() = default;

Bv_1_1::String ModelInFormat::endOfBlock()
{
    constexpr std::array<wchar_t, 2> text = {ModelFormat::END_OF_BLOCK, L'\0'};
    return text.data();
}

int ModelInFormat::status() const noexcept
{
    return tokens_->status();
}

int ModelInFormat::unknownKeyword() const noexcept
{
    return tokens_->hasFailed() ? tokens_->status() : StatusCode::unknownKeyword;
}

std::size_t ModelInFormat::lineNumber() const noexcept
{
    return tokens_->lineNumber();
}

void ModelInFormat::fail(int status) noexcept
{
    tokens_->fail(StatusCode::isTolerated(status) ? StatusCode::syntaxError : status);
}

// Keywords.

Bv_1_1::String const& ModelInFormat::getKeyword()
{
    if (current_ == Current::None) {
        readKeyword();
    }
    return tokens_->hasFailed() ? Bv_1_1::String::EMPTY : keyword_;
}

void ModelInFormat::readKeyword()
{
    int const byte = tokens_->peekToken();
    if (byte == endOfBlockByte) {
        tokens_->take();
        keyword_ = endOfBlock();
        current_ = Current::EndOfBlock;
    } else if (byte == endOfInput && depth_ > 0) {
        tokens_->fail(StatusCode::unexpectedEnd);
    } else if (byte == endOfInput || (isBare() && scope_.bareValueFound)) {
        keyword_ = Bv_1_1::String::NIL;
    } else {
        keyword_ = isBare() ? Bv_1_1::String(ModelFormat::valueKeyword) : tokens_->readKeyword();
        current_ = Current::Statement;
        scope_.bareValueFound = isBare();
    }
}

void ModelInFormat::nextKeyword()
{
    if (current_ == Current::Statement) {
        skipRest();
    } else if (current_ == Current::EndOfBlock) {
        leaveBlock();
    }
    current_ = Current::None;
    scope_.propagates = false;
}

void ModelInFormat::leaveBlock() noexcept
{
    depth_ -= depth_ > 0 ? 1 : 0;
    current_ = Current::None;
}

void ModelInFormat::setPropagateKeyword(Bv_1_1::String const& keyword)
{
    if (current_ == Current::None || keyword_ != keyword) {
        nextKeyword();
        keyword_ = keyword;
        current_ = Current::Finished;
    }
    scope_.propagates = true;
}

bool ModelInFormat::startBlock()
{
    while (!isBare() && hasValue() && status() == StatusCode::ok) {
        tokens_->skipValue();
    }
    int const byte = tokens_->peekToken();
    if (byte != startOfBlockByte) {
        tokens_->failAt(byte, StatusCode::wrongKind);
        return false;
    }
    takeStartOfBlock(0);
    if (tokens_->hasFailed()) {
        return false;
    }
    ++depth_;
    current_ = Current::None;
    return true;
}

// Scopes.

ModelInFormat::ScopeState ModelInFormat::openScope() noexcept
{
    ScopeState inner;
    inner.beganAtEndOfBlock = current_ == Current::EndOfBlock;
    return std::exchange(scope_, inner);
}

void ModelInFormat::closeScope(ScopeState outer) noexcept
{
    bool const isDoneWithBlock =
        current_ == Current::EndOfBlock && !scope_.beganAtEndOfBlock && !scope_.propagates;
    if (isDoneWithBlock) {
        leaveBlock();
    }
    scope_ = outer;
}

// Values.

bool ModelInFormat::hasValue()
{
    int const byte = tokens_->peekToken();
    return byte != endOfInput && byte != endOfValueByte && byte != startOfBlockByte && byte != endOfBlockByte;
}

bool ModelInFormat::hasBlock()
{
    return tokens_->peekToken() == startOfBlockByte;
}

detail::TokenReader& ModelInFormat::valueTokens()
{
    if (isBare() && current_ == Current::Statement) {
        current_ = Current::Finished; // its only value
    }
    return *tokens_;
}

std::string ModelInFormat::keepValue()
{
    return tokens_->keep([this] { tokens_->skipValue(); });
}

// The rest of a statement.

std::optional<KeptText> ModelInFormat::keepRest()
{
    if (!isBare() && current_ != Current::Statement) {
        return std::nullopt;
    }
    std::string text = tokens_->keep([this] { skipRest(); });
    if (current_ == Current::Statement) {
        current_ = Current::Finished;
    }
    return tokens_->hasFailed() ? std::nullopt : std::optional(KeptText(std::move(text), format_));
}

void ModelInFormat::skipRest()
{
    if (isBare()) {
        skipBareItem();
    } else {
        skipStatement();
    }
}

// Not recursive, because blocks may be nested.
void ModelInFormat::skipStatement()
{
    int open = 0;
    bool isInStatement = true;
    do {
        int const byte = tokens_->peekToken();
        if (isInStatement && byte == startOfBlockByte) {
            takeStartOfBlock(open++);
            isInStatement = false;
        } else if (isInStatement && byte == endOfValueByte) {
            tokens_->take();
            isInStatement = false;
        } else if (isInStatement) {
            tokens_->skipValue();
        } else if (byte == endOfBlockByte) {
            tokens_->take();
            --open;
        } else {
            (void)tokens_->readKeyword();
            isInStatement = true;
        }
    } while (!tokens_->hasFailed() && (isInStatement || open > 0));
}

void ModelInFormat::skipBareItem()
{
    int open = 0;
    do {
        int const byte = tokens_->peekToken();
        if (byte == startOfBlockByte) {
            takeStartOfBlock(open++);
        } else if (byte == endOfBlockByte && open > 0) {
            tokens_->take();
            --open;
        } else {
            tokens_->skipValue();
        }
    } while (!tokens_->hasFailed() && open > 0);
}

// `alsoOpen`: the number of open blocks that are being skipped.
void ModelInFormat::takeStartOfBlock(int alsoOpen)
{
    if (depth_ + alsoOpen >= ModelFormat::maxDepth) {
        tokens_->fail(StatusCode::tooDeep);
    } else {
        tokens_->take();
    }
}

} // namespace oV
