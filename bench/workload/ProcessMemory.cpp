#include "bench/workload/ProcessMemory.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <system_error>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace bench
{

namespace
{

[[noreturn]] void throwSystemError(char const* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

// Runs no destructors: the objects belong to the parent.
[[noreturn]] void runChild(std::function<double()> const& work, int pipeEnd)
{
    try {
        double const result = work();
        bool const succeeded = write(pipeEnd, &result, sizeof result) == static_cast<ssize_t>(sizeof result);
        _exit(succeeded ? 0 : 1);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
    }
    _exit(1);
}

} // namespace

SharedMemory::SharedMemory(std::size_t size) : size_(size)
{
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throwSystemError("mmap");
    }
    data_ = static_cast<char*>(memory);
}

SharedMemory::~SharedMemory()
{
    munmap(data_, size_);
}

double inChild(std::function<double()> const& work)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        throwSystemError("pipe");
    }
    pid_t const child = fork();
    if (child < 0) {
        throwSystemError("fork");
    }
    if (child == 0) {
        runChild(work, ends[1]);
    }
    close(ends[1]);
    double result = 0.0;
    bool const succeeded = read(ends[0], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!succeeded || status != 0) {
        throw std::runtime_error("a child process failed");
    }
    return result;
}

double peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024.0;
}

void releaseFreeMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace bench
