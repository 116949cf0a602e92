#include "tools/io/InputFile.h"

#include "tools/console/ToolError.h"

#include <cerrno>
#include <system_error>

namespace oV::Roamscan::tool
{

InputFile openInput(std::filesystem::path const& path)
{
    std::error_code failure;
    auto const status = std::filesystem::status(path, failure);
    if (status.type() == std::filesystem::file_type::not_found) {
        throw fileError(path, "there is no such file; check the name");
    }
    if (status.type() != std::filesystem::file_type::regular) {
        throw fileError(path, failure ? failure.message() : "is not a regular file; name a file");
    }
    InputFile file;
    errno = 0;
    file.stream.open(path, std::ios::binary);
    if (!file.stream) {
        throw fileError(path, "cannot be opened for reading" + systemReason());
    }
    file.size = std::filesystem::file_size(path, failure);
    if (failure) {
        throw fileError(path, "has an unknown size: " + failure.message());
    }
    return file;
}

} // namespace oV::Roamscan::tool
