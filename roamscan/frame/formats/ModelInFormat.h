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

/// Reads the text forms of ModelFormat. ReadFromScope creates it; DataInFormat reads the values.
///
/// A reader iterates over the statements of its block:
///
///     for (;;) {
///         String const keyword = in.getKeyword();
///         if (keyword is NIL or END_OF_BLOCK) { break; }
///         if (keyword is known) { ... read its values with DataInFormat }
///         else if (!StatusCode::isTolerated(in.unknownKeyword())) { return in.unknownKeyword(); }
///         in.nextKeyword();
///     }
///
/// To let another object read a block, call startBlock(), then that object's reader, then nextKeyword().
/// nextKeyword() skips the part of a statement that was not read. keepRest() returns that part as text.
///
/// After a failure, getKeyword() returns the empty string, which is never a valid keyword, no value is read,
/// and status() is the code of the first failure. The loop above treats the empty string as an unknown
/// keyword, so it returns that code.
///
/// In the bare form, each scope gets ModelFormat::valueKeyword once, before its value, and then the end of
/// its block, or NIL if something else follows.
class ROAMSCAN_EXPORT ModelInFormat
{
public:
    /// @param stream must outlive this object; null is a failure (StatusCode::readFailed)
    /// @param format the form to read
    ModelInFormat(std::istream* stream, ModelFormat::Format format);

    ~ModelInFormat();
    ModelInFormat(ModelInFormat const&) = delete;
    ModelInFormat& operator=(ModelInFormat const&) = delete;

    /// The form of the text.
    [[nodiscard]] ModelFormat::Format format() const noexcept { return format_; }

    /// StatusCode::ok, or the code of the first failure.
    [[nodiscard]] int status() const noexcept;

    /// The number of the current line, counted from 1 at the start of the outermost scope.
    [[nodiscard]] std::size_t lineNumber() const noexcept;

    /// The keyword at the end of a block: the one character ModelFormat::END_OF_BLOCK.
    [[nodiscard]] static Bv_1_1::String endOfBlock();

    /// The current keyword. Reads the next one if there is none.
    /// @return NIL at the end of the input, endOfBlock() at the end of a block, the empty string after a
    ///     failure
    /// @note The end of a block that this object did not open is not a failure: the caller may have opened
    ///     it.
    [[nodiscard]] Bv_1_1::String const& getKeyword();

    /// Finishes the current keyword: skips the rest of its statement, or leaves the block that ends here.
    /// Does nothing if there is no current keyword.
    void nextKeyword();

    /// Passes a keyword to the enclosing scope, where getKeyword() returns it after this scope has closed.
    /// Must be the last call of a scope; nextKeyword() cancels it.
    void setPropagateKeyword(Bv_1_1::String const& keyword);

    /// Whether the next token starts a value. False at ";", "{" and "}", and at the end of the input.
    [[nodiscard]] bool hasValue();

    /// Whether the next token starts a block.
    [[nodiscard]] bool hasBlock();

    /// Enters the block of the current statement; in the bare form, the next block. The next keyword is then
    /// the first one of the block.
    /// @return false, which is a failure, if there is no block or more than ModelFormat::maxDepth would be
    ///     open
    bool startBlock();

    /// Reads the rest of the current statement as text, including its ";" or its block; in the bare form, the
    /// next item. Call nextKeyword() afterwards, as for any statement.
    /// @return the text; nothing after a failure or, in the keyed form, if there is no current statement
    [[nodiscard]] std::optional<KeptText> keepRest();

    /// The status for a reader that does not know the current keyword: status() after a failure, otherwise
    /// StatusCode::unknownKeyword.
    [[nodiscard]] int unknownKeyword() const noexcept;

    /// Sets status(), unless there was a failure before. For readers that reject a text that follows the
    /// grammar.
    /// @param status the code of the failure. Readers would go on after a tolerated one, so each of those
    /// counts as StatusCode::syntaxError.
    void fail(int status) noexcept;

private:
    template <typename T>
    friend class DataInFormat;
    friend class KeptText;
    friend class ReadFromScope;

    /// What the current keyword is.
    enum class Current
    {
        None,       // none; the next keyword has not been read
        Statement,  // a keyword whose values or block come next
        Finished,   // a keyword whose statement has been read completely
        EndOfBlock, // the end of a block
    };

    /// The state of each scope.
    struct ScopeState
    {
        bool bareValueFound = false; // in the bare form: getKeyword() has returned valueKeyword
        bool beganAtEndOfBlock =
            false;               // the end of a block was the current keyword when the scope was opened
        bool propagates = false; // the current keyword is for the enclosing scope
    };

    // For ReadFromScope: openScope() returns the state of the enclosing scope, which closeScope() takes back.
    [[nodiscard]] ROAMSCAN_NO_EXPORT ScopeState openScope() noexcept;
    ROAMSCAN_NO_EXPORT void closeScope(ScopeState outer) noexcept;

    // For DataInFormat: the tokens of the next value.
    [[nodiscard]] ROAMSCAN_NO_EXPORT detail::TokenReader& valueTokens();

    // For KeptText: the text of the next value.
    [[nodiscard]] ROAMSCAN_NO_EXPORT std::string keepValue();

    [[nodiscard]] bool isBare() const noexcept { return format_ == ModelFormat::Format::Bare; }
    ROAMSCAN_NO_EXPORT void readKeyword();
    ROAMSCAN_NO_EXPORT void leaveBlock() noexcept;
    ROAMSCAN_NO_EXPORT void skipRest();
    ROAMSCAN_NO_EXPORT void skipStatement();
    ROAMSCAN_NO_EXPORT void skipBareItem();
    ROAMSCAN_NO_EXPORT void takeStartOfBlock(int alsoOpen);

    ModelFormat::Format format_;
    std::unique_ptr<detail::TokenReader> tokens_;
    Current current_ = Current::None;
    Bv_1_1::String keyword_;
    int depth_ = 0; // number of open blocks
    ScopeState scope_;
};

} // namespace oV
