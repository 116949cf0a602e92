#pragma once

#include <cstddef>
#include <functional>
#include <span>

namespace bench
{

/// Memory that children see, and write to, as this process does.
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

/// What `work` returns in a child process, which ends with it.
/// @throws std::runtime_error if the child fails
double inChild(std::function<double()> const& work);

/// The most memory that this process ever held at once, in bytes. A child starts with what it inherits.
[[nodiscard]] double peakMemory();

/// Gives the system back what the heap keeps of freed memory, where the allocator supports it. What is
/// measured next pays for its memory as it would in a fresh process, whatever ran before.
void releaseFreeMemory();

} // namespace bench
