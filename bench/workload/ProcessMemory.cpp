#include "bench/workload/ProcessMemory.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

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

SharedMemory::SharedMemory(std::size_t size) : size_(size)
{
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::system_error(errno, std::generic_category(), "mmap");
    }
    data_ = static_cast<char*>(memory);
}

SharedMemory::~SharedMemory()
{
    munmap(data_, size_);
}

double inChild(std::function<double()> const& work)
{
    SharedMemory const shared(sizeof(double));
    double& result = *reinterpret_cast<double*>(shared.bytes().data());
    pid_t const child = fork();
    if (child < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (child == 0) { // ends without running destructors: the objects belong to the parent
        try {
            result = work();
            _exit(0);
        } catch (std::exception const& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
            _exit(1);
        }
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0) {
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
