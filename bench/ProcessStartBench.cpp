/// @file
/// Starting a process that uses the library for poses, against a process that uses nothing: what a plug-in
/// pays for being linked to the library.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>

namespace bench
{

namespace
{

// Runs a program of this build to its end.
bool run(std::string program)
{
    std::array<char*, 2> arguments{program.data(), nullptr};
    pid_t process = 0;
    int status = 0;
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(process, &status, 0) != process || status != 0)
    {
        throw std::runtime_error(program + " failed");
    }
    return true;
}

Function starting(char const* program)
{
    return [program](benchmark::State& state) { timeEach(state, [program] { return run(program); }); };
}

} // namespace

Group processStart()
{
    return {"Starting and ending a process",
            Cost::ReportedTime,
            {{"one that samples a pose",
              milliseconds,
              {"RoamscanDataStructures", starting(ROAMSCAN_BENCH_POSE_PROGRAM)},
              {{"empty, with the C++ runtime", starting(ROAMSCAN_BENCH_RUNTIME_PROGRAM), timesTheTime, 3.0},
               {"empty, only the C library", starting(ROAMSCAN_BENCH_EMPTY_PROGRAM), timesTheTime}}}}};
}

} // namespace bench
