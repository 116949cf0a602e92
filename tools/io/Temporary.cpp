#include "tools/io/Temporary.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <random>
#include <system_error>
#include <utility>

#if defined(_WIN32)
#include <windows.h>

#include <mutex>
#else
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#endif

namespace oV::Roamscan::tool
{

namespace
{

using Character = std::filesystem::path::value_type;

/// Changed only while the signals are held back, so that the signal handler always finds a whole list.
constinit Temporary* newest = nullptr;

// These functions call only what a signal handler may call. They tell whether nothing is left under the name.
#if defined(_WIN32)

bool isGone(bool removed)
{
    return removed || GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
}

bool removeFile(Character const* name)
{
    return isGone(DeleteFileW(name) != 0);
}

bool removeFolder(Character const* name)
{
    return isGone(RemoveDirectoryW(name) != 0);
}

bool isFile(Character const* name)
{
    return GetFileAttributesW(name) != INVALID_FILE_ATTRIBUTES;
}

#else

bool removeFile(Character const* name)
{
    return unlink(name) == 0 || errno == ENOENT;
}

bool removeFolder(Character const* name)
{
    return rmdir(name) == 0 || errno == ENOENT;
}

bool isFile(Character const* name)
{
    return access(name, F_OK) == 0;
}

#endif

/// Removes the files "0.png", "1.png" and so on up to the first missing one. Async-signal-safe.
void removeNumberedFiles(std::filesystem::path::string_type const& folder,
                         std::filesystem::path::string_type const& extension)
{
    constexpr std::size_t digits = 12;
    std::array<Character, 4096> name{};
    if (folder.size() + 1 + digits + extension.size() + 1 > name.size()) {
        return;
    }
    auto* const number = std::copy(folder.begin(), folder.end(), name.begin());
    *number = '/';
    for (unsigned int i = 0;; ++i) {
        std::array<char, digits> text{};
        char const* const end = std::to_chars(text.data(), text.data() + digits, i).ptr;
        auto* const last = std::copy(static_cast<char const*>(text.data()), end, number + 1);
        *std::copy(extension.begin(), extension.end(), last) = 0;
        if (!isFile(name.data()) || !removeFile(name.data())) {
            return;
        }
    }
}

} // namespace

Temporary::Temporary(std::filesystem::path const& path, Kind kind, std::string const& extension)
    : path_(path), extension_(std::filesystem::path(extension).native()), kind_(kind)
{
    SignalsHeld const held;
    older_ = std::exchange(newest, this);
}

Temporary::~Temporary()
{
    SignalsHeld const held;
    std::error_code ignored;
    if (kind_ == Kind::Tiles && !path_.empty()) {
        std::filesystem::remove_all(path_, ignored);
    } else if (!path_.empty()) {
        std::filesystem::remove(path_, ignored); // fails for a folder with something in it
    }
    Temporary** link = &newest;
    while (*link != this) {
        link = &(*link)->older_;
    }
    *link = older_;
}

void Temporary::release()
{
    SignalsHeld const held;
    path_.clear();
}

/// Calls only what a signal handler may call.
/// @return whether nothing is left
bool Temporary::removeAll()
{
    bool isNothingLeft = true;
    for (Temporary const* temporary = newest; temporary != nullptr; temporary = temporary->older_) {
        bool const isReleased = temporary->path_.empty();
        isNothingLeft = (isReleased || temporary->removeByName()) && isNothingLeft;
    }
    return isNothingLeft;
}

bool Temporary::removeByName() const
{
    if (kind_ == Kind::File) {
        return removeFile(path_.c_str());
    }
    if (kind_ == Kind::Tiles) {
        removeNumberedFiles(path_.native(), extension_);
    }
    // A folder that may be used for other things too stays with them.
    return removeFolder(path_.c_str()) || kind_ == Kind::EmptyFolder;
}

std::filesystem::path nameInTemporaryFolder()
{
    std::error_code failure;
    std::filesystem::path const folder = std::filesystem::temp_directory_path(failure); // empty on failure
    return folder / ("roamscan-" + std::to_string(std::random_device()()));
}

#if defined(_WIN32)

namespace
{

/// Held while the list of temporaries changes, and by the handler to the end of the process.
std::recursive_mutex listMutex; // NOLINT(cert-err58-cpp): does not throw

/// Runs on a thread of its own, while the main thread goes on. That thread may have a tile open, which cannot
/// be removed until it is written, and it may write another tile while the folder is there.
BOOL WINAPI handleConsoleEvent(DWORD /*event*/)
{
    constexpr int attempts = 500;
    constexpr DWORD pauseInMilliseconds = 10;
    listMutex.lock();
    for (int i = 0; i < attempts && !Temporary::removeAll(); ++i) {
        Sleep(pauseInMilliseconds);
    }
    TerminateProcess(GetCurrentProcess(), STATUS_CONTROL_C_EXIT);
    return TRUE;
}

} // namespace

SignalsHeld::SignalsHeld()
{
    listMutex.lock();
}

SignalsHeld::~SignalsHeld()
{
    listMutex.unlock();
}

void removeTemporariesOnSignals()
{
    SetConsoleCtrlHandler(&handleConsoleEvent, TRUE);
}

#else

namespace
{

constexpr std::array handledSignals{SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ};

constinit pthread_t mainThread{};

sigset_t setOfHandledSignals()
{
    sigset_t set;
    sigemptyset(&set);
    for (int const signal : handledSignals) {
        sigaddset(&set, signal);
    }
    return set;
}

/// Runs on the main thread, so that nothing is created after the removal: a signal that arrives on another
/// thread is sent on. The main thread does not go on afterwards: the signal, now with its default action, is
/// delivered again as soon as the handler returns. Another thread does, and finds its errno unchanged.
void handleSignal(int signal)
{
    int const error = errno;
    if (pthread_equal(pthread_self(), mainThread) == 0) {
        pthread_kill(mainThread, signal);
        errno = error;
        return;
    }
    Temporary::removeAll();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    errno = error;
}

} // namespace

SignalsHeld::SignalsHeld()
{
    sigset_t const handled = setOfHandledSignals();
    sigset_t previous;
    pthread_sigmask(SIG_BLOCK, &handled, &previous);
    wasHeld_ = sigismember(&previous, handledSignals.front()) == 1; // in an outer scope
}

SignalsHeld::~SignalsHeld()
{
    if (!wasHeld_) {
        sigset_t const handled = setOfHandledSignals();
        pthread_sigmask(SIG_UNBLOCK, &handled, nullptr);
    }
}

void removeTemporariesOnSignals()
{
    mainThread = pthread_self();
    struct sigaction action = {};
    action.sa_handler = &handleSignal;
    action.sa_mask = setOfHandledSignals();
    action.sa_flags = SA_RESTART;
    for (int const signal : handledSignals) {
        struct sigaction current = {};
        if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

#endif

} // namespace oV::Roamscan::tool
