#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <limits>
#include <memory>
#include <string>

namespace oV::Roamscan::tool
{

/// A file opened for binary reading.
struct InputFile
{
    /// The size of an input that is no regular file.
    static constexpr std::uint64_t unknownSize = std::numeric_limits<std::uint64_t>::max();

    std::unique_ptr<std::istream> owned; ///< The stream, unless it is the standard input.
    std::istream& stream;
    std::uint64_t size = 0; ///< Bytes, or unknownSize.

    /// Whether the size is known, and the stream can be repositioned.
    [[nodiscard]] bool isRegular() const { return size != unknownSize; }
};

/// Whether the path is "-", which stands for the standard input or the standard output.
[[nodiscard]] bool isStandardStream(std::filesystem::path const& path);

/// Opens a regular file.
/// @throws ToolError if there is no regular file of this name, or it cannot be opened
[[nodiscard]] InputFile openInput(std::filesystem::path const& path);

/// Opens a regular file, a named pipe, or the standard input for the name "-".
/// @throws ToolError if there is nothing of this kind, or it cannot be opened
[[nodiscard]] InputFile openInputOrPipe(std::filesystem::path const& path);

/// Opens a regular file; of a named pipe or the standard input ("-"), a copy in a temporary file, so that the
/// stream can be repositioned and the size is known. The name of the copy is removed at once.
/// @throws ToolError if there is nothing of this kind, it cannot be opened, or there is no room for the copy
[[nodiscard]] InputFile openInputOrCopyOfPipe(std::filesystem::path const& path);

/// @param what the two inputs: "the poses and the times"
/// @throws ToolError if both are the standard input
void requireOneStandardInput(std::filesystem::path const& first,
                             std::filesystem::path const& second,
                             std::string const& what);

} // namespace oV::Roamscan::tool
