#include "tools/io/OutputFile.h"

#include "tools/console/ToolError.h"
#include "tools/io/CopyBytes.h"
#include "tools/io/InputFile.h"
#include "tools/io/RemovableFile.h"

#include <cerrno>
#include <iostream>
#include <string>
#include <system_error>

namespace oV::Roamscan::tool
{

OutputFile::OutputFile(std::filesystem::path const& target, Writing writing)
    : Output(target), file_(nullptr), stream_(&file_)
{
    if (!isStandardStream(target)) {
        requireFile(target);
        create(target);
        takeModeOfTarget(); // before the writing, because what is written may be meant for the owner only
    } else if (writing == Writing::WithSeeking) {
        create(target);
    } else {
        stream_ = &std::cout;
    }
}

void OutputFile::requireFile(std::filesystem::path const& name) const
{
    using std::filesystem::file_type;
    std::error_code failure;
    auto const type = std::filesystem::status(target(), failure).type();
    if (!name.has_filename() || type == file_type::directory) {
        throw fileError(name, "is a folder; name a file");
    }
    if (type != file_type::not_found && type != file_type::regular) {
        throw fileError(name,
                        failure ? "cannot be written: " + failure.message()
                                : std::string("is not a regular file; name a file"));
    }
}

void OutputFile::create(std::filesystem::path const& name)
{
    errno = 0;
    buffer_ = createRemovable(temporary(), std::ios::out);
    if (buffer_ == nullptr) {
        throw fileError(name, "cannot be created" + systemReason());
    }
    file_.rdbuf(buffer_.get());
}

void OutputFile::finish()
{
    errno = 0;
    stream_->flush();
    if (!*stream_ || (buffer_ != nullptr && buffer_->close() == nullptr)) {
        throw fileError(target(), "could not be written to the end" + systemReason() + "; is the disk full?");
    }
    if (stream_ == &file_ && isStandardStream(target())) {
        copyToStandardOutput();
    }
}

void OutputFile::copyToStandardOutput() const
{
    std::ifstream file(temporary(), std::ios::binary);
    copyBytes(file, std::cout);
    if (!file.eof() || !std::cout.flush()) {
        throw fileError(target(), "could not be written to the end" + systemReason());
    }
}

} // namespace oV::Roamscan::tool
