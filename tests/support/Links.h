#pragma once

#include <filesystem>
#include <system_error>

namespace support
{

/// Makes a symbolic link to a file or a folder.
/// @return false on Windows if this process may not make links, which is usual there
inline bool makeLink(std::filesystem::path const& target, std::filesystem::path const& link)
{
    std::error_code failure;
    if (std::filesystem::is_directory(target)) {
        std::filesystem::create_directory_symlink(target, link, failure);
    } else {
        std::filesystem::create_symlink(target, link, failure);
    }
#if !defined(_WIN32)
    if (failure) {
        throw std::filesystem::filesystem_error("no link", target, link, failure);
    }
#endif
    return !failure;
}

} // namespace support
