#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// Reads a text line by line in bounded memory. Lines end with LF or CR LF, which the last line may lack. A
/// byte order mark at the start is skipped.
class LineReader
{
public:
    static constexpr std::size_t longestLine = 65536; ///< Bytes.

    /// `name` is the name of the text for messages. Keeps a reference to the stream.
    LineReader(std::istream& text, std::filesystem::path name);

    /// Reads the next line, which is valid until the next call.
    /// @return false at the end
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
