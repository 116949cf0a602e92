#include "tools/io/InputFile.h"

#include "tools/console/PathText.h"
#include "tools/console/ToolError.h"
#include "tools/io/CopyBytes.h"
#include "tools/io/RemovableFile.h"
#include "tools/io/Temporary.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

namespace fs = std::filesystem;

/// Owns its buffer.
class BufferStream : public std::istream
{
public:
    explicit BufferStream(std::unique_ptr<std::streambuf> buffer)
        : std::istream(buffer.get()), buffer_(std::move(buffer))
    {}

private:
    std::unique_ptr<std::streambuf> buffer_;
};

InputFile open(fs::path const& path, fs::file_type type)
{
    errno = 0;
    auto stream = std::make_unique<std::ifstream>(path, std::ios::binary);
    if (!*stream) {
        throw fileError(path, "cannot be opened for reading" + systemReason());
    }
    std::uint64_t size = InputFile::unknownSize;
    if (type == fs::file_type::regular) {
        std::error_code failure;
        size = fs::file_size(path, failure);
        if (failure) {
            throw fileError(path, "has an unknown size: " + failure.message());
        }
    }
    std::istream& opened = *stream;
    return {std::move(stream), opened, size};
}

/// @throws ToolError if there is nothing of this name, or something that has no content to read
fs::file_type typeOf(fs::path const& path, bool mayBePipe)
{
    std::error_code failure;
    fs::file_type const type = fs::status(path, failure).type();
    if (type == fs::file_type::not_found) {
        throw fileError(path, "there is no such file; check the name");
    }
    if (type == fs::file_type::directory) {
        throw fileError(path, "is a folder; name a file");
    }
    bool const isPipe = type == fs::file_type::fifo;
    if (isPipe && !mayBePipe) {
        throw fileError(path, "is a pipe, but this format cannot be read from one; name a file");
    }
    if (!isPipe && type != fs::file_type::regular) {
        throw fileError(path, failure ? failure.message() : "is not a regular file; name a file");
    }
    return type;
}

} // namespace

bool isStandardStream(fs::path const& path)
{
    return path == "-";
}

InputFile openInput(fs::path const& path)
{
    if (isStandardStream(path)) {
        throw fileError(path, "this format cannot be read from a pipe; name a file (./- for a file named -)");
    }
    return open(path, typeOf(path, false));
}

InputFile openInputOrPipe(fs::path const& path)
{
    if (isStandardStream(path)) {
        return {nullptr, std::cin, InputFile::unknownSize};
    }
    return open(path, typeOf(path, true));
}

InputFile openInputOrCopyOfPipe(fs::path const& path)
{
    InputFile pipe = openInputOrPipe(path);
    if (pipe.isRegular()) {
        return pipe;
    }
    Temporary const copy(nameInTemporaryFolder());
    errno = 0;
    std::unique_ptr<std::filebuf> buffer = createRemovable(copy.path(), std::ios::in | std::ios::out);
    std::ostream file(buffer.get()); // fails without a buffer
    copyBytes(pipe.stream, file);
    if (pipe.stream.bad()) {
        throw fileError(path, "cannot be read" + systemReason());
    }
    if (!file.flush()) {
        throw fileError(path, "cannot be copied to " + utf8(copy.path()) + systemReason());
    }
    auto const size = static_cast<std::uint64_t>(std::streamoff(file.tellp()));
    auto stream = std::make_unique<BufferStream>(std::move(buffer));
    stream->seekg(0);
    std::istream& opened = *stream;
    return {std::move(stream), opened, size};
}

void requireOneStandardInput(fs::path const& first, fs::path const& second, std::string const& what)
{
    if (isStandardStream(first) && isStandardStream(second)) {
        throw ToolError(what + " cannot both be read from the standard input; name a file for one");
    }
}

} // namespace oV::Roamscan::tool
