#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeptText.h>
#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/platform/Export.h>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

namespace oV
{

namespace detail
{
class TokenReader;
} // namespace detail

/// Reads the text forms of ModelFormat. ReadFromScope makes it; DataInFormat reads the values.
///
/// A reader walks the statements of its block:
///
///     for (;;) {
///         String const keyword = in.getKeyword();
///         if (keyword is NIL or END_OF_BLOCK) { break; }
///         ... read the values with DataInFormat, or leave them
///         in.nextKeyword();
///     }
///
/// To let another object read a block: startBlock(), call it, nextKeyword(). What a reader leaves of a
/// statement is skipped by nextKeyword(), or kept by keepRest().
///
/// The first failure stays: from then on the keyword is the empty string, which no statement has, no value is
/// read, and status() has the code. A reader that hands every keyword it does not know to unknownKeyword()
/// so reports a damaged text.
///
/// In the bare form each scope finds ModelFormat::valueKeyword once, in front of its value, and then the end
/// of its block, or NIL where something else follows.
class ROAMSCAN_EXPORT ModelInFormat
{
public:
    /// @param stream may be null, which is a failure; it must outlive this object
    ModelInFormat(std::istream* stream, ModelFormat::Format format);

    ~ModelInFormat();
    ModelInFormat(ModelInFormat const&) = delete;
    ModelInFormat& operator=(ModelInFormat const&) = delete;

    /// The form that is read.
    [[nodiscard]] ModelFormat::Format format() const noexcept { return format_; }

    /// StatusCode::ok, or the code of the first failure.
    [[nodiscard]] int status() const noexcept;

    /// The line of the input at which the reader stands, counted from 1 where the outermost scope began.
    [[nodiscard]] std::size_t lineNumber() const noexcept;

    /// The keyword that the end of a block has: the one character ModelFormat::END_OF_BLOCK.
    [[nodiscard]] static Bv_1_1::String endOfBlock();

    /// The current keyword, which is read if there is none yet. NIL at the end of the input; the one
    /// character ModelFormat::END_OF_BLOCK at the end of a block; empty after a failure.
    ///
    /// An end of block where no block is open is no failure: the block may belong to somebody else.
    [[nodiscard]] Bv_1_1::String const& getKeyword();

    /// Done with the current keyword: skips what is left of its statement, or leaves the block that ends
    /// here. Nothing happens if there is no current keyword.
    void nextKeyword();

    /// Makes this the current keyword and lets the enclosing scope find it as its current one. The last call
    /// of a scope; nextKeyword() takes it back.
    void setPropagateKeyword(Bv_1_1::String const& keyword);

    /// Whether a value comes next; false at ";", at a block, at the end of one and at the end of the input.
    [[nodiscard]] bool hasValue();

    /// Whether a block comes next.
    [[nodiscard]] bool hasBlock();

    /// Enters the block of the current statement; in the bare form, the block that comes next. The next
    /// keyword is the block's first one.
    /// @return false if there is no block, or too many are open; that is a failure
    bool startBlock();

    /// Takes what is left of the current statement as text, with its ";" or its block; in the bare form, the
    /// item that comes next. nextKeyword() finds nothing left then.
    /// @return nothing after a failure and, in the keyed form, without a current statement
    [[nodiscard]] std::optional<KeptText> keepRest();

    /// What a reader returns that does not know the current keyword: the status of a failed input,
    /// StatusCode::unknownKeyword otherwise.
    [[nodiscard]] int unknownKeyword() const noexcept;

    /// Fails with the status, unless the input has failed before. For readers that find a text which follows
    /// the grammar but makes no sense to them.
    void fail(int status) noexcept;

private:
    template <typename T>
    friend class DataInFormat;
    friend class KeptText;
    friend class ReadFromScope;

    /// What the current keyword is.
    enum class Current
    {
        None,       // there is none; the next one has not been read
        Statement,  // that of a statement whose values or block come next
        Finished,   // one of which nothing is left
        EndOfBlock, // the end of a block
    };

    /// What each scope has for itself.
    struct ScopeState
    {
        bool bareValueFound = false; // in the bare form: valueKeyword has been the current keyword
        bool beganAtEndOfBlock =
            false;               // the end of a block was the current keyword when the scope was opened
        bool propagates = false; // the current keyword is for the enclosing scope
    };

    // For ReadFromScope: openScope() returns the state of the enclosing scope, which closeScope() takes back.
    [[nodiscard]] ScopeState openScope() noexcept;
    void closeScope(ScopeState outer) noexcept;

    // For DataInFormat: what to read a value from.
    [[nodiscard]] detail::TokenReader& valueTokens();

    // For KeptText: the text of the next value.
    [[nodiscard]] std::string keepValue();

    [[nodiscard]] bool isBare() const noexcept { return format_ == ModelFormat::Format::Bare; }
    void readKeyword();
    void leaveBlock() noexcept;
    void skipRest();
    void skipStatement();
    void skipBareItem();
    void takeStartOfBlock(int alsoOpen);

    ModelFormat::Format format_;
    std::unique_ptr<detail::TokenReader> tokens_;
    Current current_ = Current::None;
    Bv_1_1::String keyword_;
    int depth_ = 0; // blocks that were entered and not left
    ScopeState scope_;
};

} // namespace oV
