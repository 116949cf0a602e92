#pragma once

#include <filesystem>
#include <system_error>

namespace support
{

/// Makes a symbolic link.
/// @return false on Windows if this process may not make links, which is usual there
inline bool makeLink(std::filesystem::path const& target, std::filesystem::path const& link)
{
    std::error_code failure;
    std::filesystem::create_symlink(target, link, failure);
#if !defined(_WIN32)
    if (failure) {
        throw std::filesystem::filesystem_error("no link", target, link, failure);
    }
#endif
    return !failure;
}

} // namespace support
