#include "tools/io/OutputFile.h"

#include "tools/console/ToolError.h"
#include "tools/io/OutputPlace.h"

#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

namespace oV::Roamscan::tool
{

namespace fs = std::filesystem;

OutputFile::OutputFile(fs::path const& target) : target_(realTarget(target))
{
    std::error_code failure;
    auto const type = fs::status(target_, failure).type();
    if (!target_.has_filename() || type == fs::file_type::directory) {
        throw fileError(target, "is a folder; name a file");
    }
    if (type != fs::file_type::not_found && type != fs::file_type::regular) {
        throw fileError(target,
                        failure ? "cannot be written: " + failure.message()
                                : std::string("is not an ordinary file; name a file"));
    }
    temporary_ = temporaryBeside(target_);
    errno = 0;
    stream_.open(temporary_, std::ios::binary | std::ios::trunc);
    if (!stream_) {
        throw fileError(target, "cannot be made" + systemReason());
    }
}

OutputFile::~OutputFile()
{
    if (!committed_) {
        stream_.close();
        std::error_code ignored;
        fs::remove(temporary_, ignored);
    }
}

void OutputFile::close()
{
    if (closed_) {
        return;
    }
    errno = 0;
    stream_.close();
    if (!stream_) {
        throw fileError(target_, "could not be written to the end" + systemReason() + "; is the disk full?");
    }
    closed_ = true;
}

void OutputFile::commit()
{
    close();
    std::error_code failure;
    fs::rename(temporary_, target_, failure);
    if (failure) {
        throw fileError(target_, "could not be put in place: " + failure.message());
    }
    committed_ = true;
}

void requireDistinctFiles(std::initializer_list<fs::path> paths)
{
    std::vector<fs::path> seen;
    for (fs::path const& path : paths) {
        if (path.empty()) {
            continue;
        }
        for (fs::path const& other : seen) {
            std::error_code ignored;
            if (fs::equivalent(path, other, ignored) ||
                fs::absolute(path).lexically_normal() == fs::absolute(other).lexically_normal())
            {
                throw fileError(path, "is named twice; give every file its own name");
            }
        }
        seen.push_back(path);
    }
}

} // namespace oV::Roamscan::tool
