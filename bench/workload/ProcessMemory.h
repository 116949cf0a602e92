#pragma once

#include <functional>

namespace bench
{

/// Runs `work` in a child process.
/// @return its result
/// @throws std::runtime_error if the child fails
double inChild(std::function<double()> const& work);

/// The peak of this process's resident memory, in bytes. A child starts with what its parent has.
[[nodiscard]] double peakMemory();

/// Releases free memory and lowers the peak to what is resident now.
/// @throws std::runtime_error if the system cannot
void resetPeakMemory();

/// Returns the heap's free memory to the system where the allocator supports it. The next measurement then
/// allocates as in a new process, whatever ran before.
void releaseFreeMemory();

} // namespace bench
