#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// Walks through a text line by line, in bounded memory. Lines end with LF or CR LF, the last one may end
/// without; a byte order mark at the start is skipped.
class LineReader
{
public:
    static constexpr std::size_t longestLine = 65536; ///< Bytes.

    /// `name` is what messages call the text. Borrows the stream.
    LineReader(std::istream& text, std::filesystem::path name);

    /// Goes on to the next line; false at the end. The line lives until the next call.
    /// @throws ToolError if a line is longer than longestLine, or the text cannot be read
    [[nodiscard]] bool next(std::string_view& line);

    [[nodiscard]] std::uint64_t number() const { return number_; } ///< Of the current line, from 1.
    [[nodiscard]] std::filesystem::path const& name() const { return name_; }

private:
    std::istream& text_;
    std::filesystem::path name_;
    std::vector<char> buffer_;
    std::uint64_t number_ = 0;
};

} // namespace oV::Roamscan::tool
