#pragma once

#include <istream>
#include <ostream>
#include <span>
#include <streambuf>

namespace bench
{

/// A stream buffer over memory that is there already, so that neither a file system nor a growing string is
/// measured.
class MemoryStreamBuffer : public std::streambuf
{
public:
    explicit MemoryStreamBuffer(std::span<char> memory)
    {
        setg(memory.data(), memory.data(), memory.data() + memory.size());
        setp(memory.data(), memory.data() + memory.size());
    }

    [[nodiscard]] std::size_t written() const { return static_cast<std::size_t>(pptr() - pbase()); }
};

} // namespace bench
