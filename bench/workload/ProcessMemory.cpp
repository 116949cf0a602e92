#include "bench/workload/ProcessMemory.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <system_error>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace bench
{

double inChild(std::function<double()> const& work)
{
    int ends[2]; // of a pipe for the result
    if (pipe(ends) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    pid_t const child = fork();
    if (child == 0) { // ends without running destructors: the objects belong to the parent
        try {
            double const result = work();
            _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
        } catch (std::exception const& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
            _exit(1);
        }
    }
    close(ends[1]);
    double result = 0.0;
    bool const hasResult = read(ends[0], &result, sizeof result) == sizeof result;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (child < 0 || !hasResult) {
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

void resetPeakMemory()
{
    releaseFreeMemory();
    std::ofstream control("/proc/self/clear_refs");
    if (!(control << 5 << std::flush)) { // 5: the peak; see proc(5)
        throw std::runtime_error("cannot reset the peak of memory");
    }
}

void releaseFreeMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace bench
