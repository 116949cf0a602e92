#include "tools/io/Temporary.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <random>
#include <system_error>
#include <utility>

#if !defined(_WIN32)
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#endif

namespace oV::Roamscan::tool
{

namespace
{

/// Changed only while the signals are held back, so that the signal handler always finds a whole list.
constinit Temporary* newest = nullptr;

#if !defined(_WIN32)

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

/// Removes the files "0.png", "1.png" and so on up to the first missing one. Async-signal-safe.
void removeNumberedFiles(char const* folder, char const* extension)
{
    constexpr std::size_t digits = 12;
    std::array<char, 4096> name{};
    std::size_t const start = std::strlen(folder);
    std::size_t const extensionSize = std::strlen(extension) + 1; // with the terminating zero
    if (start + 1 + digits + extensionSize > name.size()) {
        return;
    }
    std::memcpy(name.data(), folder, start);
    name[start] = '/';
    char* const number = name.data() + start + 1;
    for (unsigned int i = 0;; ++i) {
        char* const end = std::to_chars(number, number + digits, i).ptr;
        std::memcpy(end, extension, extensionSize);
        if (unlink(name.data()) != 0) {
            return;
        }
    }
}

#endif

} // namespace

Temporary::Temporary(std::filesystem::path const& path, Kind kind, std::string extension)
    : path_(path), extension_(std::move(extension)), kind_(kind)
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

std::filesystem::path nameInTemporaryFolder()
{
    std::error_code failure;
    std::filesystem::path const folder = std::filesystem::temp_directory_path(failure); // empty on failure
    return folder / ("roamscan-" + std::to_string(std::random_device()()));
}

#if defined(_WIN32)

SignalsHeld::SignalsHeld() = default;
SignalsHeld::~SignalsHeld() = default;
void removeTemporariesOnSignals() {}

#else

void Temporary::removeInSignalHandler() const
{
    if (path_.empty()) {
        return; // it was released
    }
    if (kind_ == Kind::File) {
        unlink(path_.c_str());
        return;
    }
    if (kind_ == Kind::Tiles) {
        removeNumberedFiles(path_.c_str(), extension_.c_str());
    }
    rmdir(path_.c_str());
}

/// Runs on the main thread, so that nothing is created after the removal: a signal that arrives on another
/// thread is sent on. The main thread does not go on afterwards: the signal, now with its default action, is
/// delivered again as soon as the handler returns. Another thread does, and finds its errno unchanged.
void Temporary::handleSignal(int signal)
{
    int const error = errno;
    if (pthread_equal(pthread_self(), mainThread) == 0) {
        pthread_kill(mainThread, signal);
        errno = error;
        return;
    }
    for (Temporary const* temporary = newest; temporary != nullptr; temporary = temporary->older_) {
        temporary->removeInSignalHandler();
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    errno = error;
}

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
    action.sa_handler = &Temporary::handleSignal;
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
