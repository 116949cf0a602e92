#include "tools/io/OutputFile.h"

#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"

#include <cerrno>
#include <iostream>
#include <string>
#include <system_error>

namespace oV::Roamscan::tool
{

OutputFile::OutputFile(std::filesystem::path const& target) : Output(target), stream_(&file_)
{
    if (isStandardStream(target)) {
        stream_ = &std::cout;
        return;
    }
    using std::filesystem::file_type;
    std::error_code failure;
    auto const type = std::filesystem::status(this->target(), failure).type();
    if (!target.has_filename() || type == file_type::directory) {
        throw fileError(target, "is a folder; name a file");
    }
    if (type != file_type::not_found && type != file_type::regular) {
        throw fileError(target,
                        failure ? "cannot be written: " + failure.message()
                                : std::string("is not a regular file; name a file"));
    }
    errno = 0;
    file_.open(temporary(), std::ios::binary | std::ios::trunc);
    if (!file_) {
        throw fileError(target, "cannot be created" + systemReason());
    }
    takeModeOfTarget(); // before the writing, because what is written may be meant for the owner only
}

void OutputFile::finish()
{
    errno = 0;
    stream_->flush();
    if (stream_ == &file_) {
        file_.close();
    }
    if (!*stream_) {
        throw fileError(target(), "could not be written to the end" + systemReason() + "; is the disk full?");
    }
}

} // namespace oV::Roamscan::tool
