#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/detail/ValueText.h>

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace oV::detail
{

/// Reads the tokens of both text forms of ModelFormat. Consumes no byte after the last one of a token.
///
/// After the first failure, no byte is read, and each operation returns nothing.
class TokenReader
{
public:
    /// The value that denotes the end of the input; also returned after a failure.
    static constexpr int endOfInput = -1;

    /// @param stream may be null or have failed, which is a failure
    explicit TokenReader(std::istream* stream);

    /// StatusCode::ok, or the code of the first failure.
    [[nodiscard]] int status() const noexcept { return status_; }
    [[nodiscard]] bool hasFailed() const noexcept { return status_ != StatusCode::ok; }

    /// Sets status(), unless there was a failure before.
    void fail(int status) noexcept;

    /// fail(), with StatusCode::unexpectedEnd if the byte is the end of the input.
    void failAt(int byte, int status) noexcept;

    /// The current line, counted from 1.
    [[nodiscard]] std::size_t lineNumber() const noexcept { return line_; }

    /// Skips blank space. Returns the first byte of the next token without consuming it.
    [[nodiscard]] int peekToken();

    /// Consumes the next byte.
    int take();

    /// Reads a keyword, which is a word or a string.
    [[nodiscard]] Bv_1_1::String readKeyword();

    /// Reads a value that is neither a string nor a list.
    [[nodiscard]] std::optional<std::string> readWord();

    /// Reads a string or null.
    [[nodiscard]] std::optional<Bv_1_1::String> readText();

    /// Reads a list of strings and nulls.
    [[nodiscard]] std::optional<std::vector<Bv_1_1::String>> readTexts();

    /// Skips any value.
    void skipValue();

    /// Calls `read()` and returns all bytes that it consumes, from the next token on.
    template <typename Read>
    [[nodiscard]] std::string keep(Read const& read)
    {
        struct End
        {
            std::string*& kept;
            ~End() { kept = nullptr; }
        };
        (void)peekToken(); // blank space before it is not kept
        std::string text;
        End const end{kept_}; // also if an exception is thrown
        kept_ = &text;
        read();
        return text;
    }

private:
    [[nodiscard]] int peek();
    [[nodiscard]] std::string takeWhile(bool (*isWanted)(int) noexcept);
    [[nodiscard]] std::optional<Bv_1_1::String> readString();
    [[nodiscard]] bool readEscape(std::u16string& units);
    [[nodiscard]] bool readCode(std::u16string& units);
    [[nodiscard]] bool nextElement(bool isFirst);
    void skipElement();

    std::streambuf* bytes_ = nullptr;
    int status_ = StatusCode::ok;
    std::size_t line_ = 1;
    std::string* kept_ = nullptr; // receives a copy of each consumed byte
};

} // namespace oV::detail
