#pragma once

#include <cstddef>
#include <functional>
#include <span>

namespace bench
{

/// Memory that this process shares with its children.
class SharedMemory
{
public:
    explicit SharedMemory(std::size_t size);
    SharedMemory(SharedMemory const&) = delete;
    SharedMemory& operator=(SharedMemory const&) = delete;
    ~SharedMemory();

    [[nodiscard]] std::span<char> bytes() const { return {data_, size_}; }

private:
    char* data_ = nullptr;
    std::size_t size_;
};

/// Runs `work` in a child process.
/// @return its result
/// @throws std::runtime_error if the child fails
double inChild(std::function<double()> const& work);

/// The peak of this process's resident memory, in bytes. A child starts with that of its parent.
[[nodiscard]] double peakMemory();

/// Returns the heap's free memory to the system where the allocator supports it. The next measurement then
/// allocates as in a new process, whatever ran before.
void releaseFreeMemory();

} // namespace bench
