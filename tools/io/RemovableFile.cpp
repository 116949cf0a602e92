#include "tools/io/RemovableFile.h"

#include <utility>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <system_error>
#if defined(__GLIBCXX__)
#include <ext/stdio_filebuf.h>
#endif
#endif

namespace oV::Roamscan::tool
{

#if defined(_WIN32)

namespace
{

/// @param descriptor is closed by the buffer, or on failure
std::unique_ptr<std::filebuf> bufferOf(int descriptor, std::ios::openmode mode)
{
#if defined(__GLIBCXX__)
    constexpr std::size_t bytesAtOnce = std::size_t{1} << 16U;
    return std::make_unique<__gnu_cxx::stdio_filebuf<char>>(descriptor, mode | std::ios::binary, bytesAtOnce);
#else
    std::FILE* const file = _fdopen(descriptor, (mode & std::ios::in) != 0 ? "w+b" : "wb");
    if (file == nullptr) {
        _close(descriptor);
        return nullptr;
    }
    return std::make_unique<std::filebuf>(file);
#endif
}

} // namespace

std::unique_ptr<std::filebuf> createRemovable(std::filesystem::path const& path, std::ios::openmode mode)
{
    DWORD const access = (mode & std::ios::in) != 0 ? GENERIC_READ | GENERIC_WRITE : GENERIC_WRITE;
    HANDLE const file = CreateFileW(path.c_str(),
                                    access,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr,
                                    CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL,
                                    nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        std::error_code const failure(static_cast<int>(GetLastError()), std::system_category());
        std::error_condition const reason = failure.default_error_condition();
        errno = reason.category() == std::generic_category() ? reason.value() : EIO;
        return nullptr;
    }
    int const descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY);
    if (descriptor == -1) {
        CloseHandle(file);
        return nullptr;
    }
    return bufferOf(descriptor, mode);
}

#else

std::unique_ptr<std::filebuf> createRemovable(std::filesystem::path const& path, std::ios::openmode mode)
{
    auto file = std::make_unique<std::filebuf>();
    return file->open(path, mode | std::ios::binary | std::ios::trunc) == nullptr ? nullptr : std::move(file);
}

#endif

} // namespace oV::Roamscan::tool
