#pragma once

#include <istream>
#include <ostream>
#include <span>
#include <streambuf>

namespace bench
{

/// A stream buffer over allocated memory, so that neither a file system nor a growing string is measured. It
/// seeks forwards and backwards from the current position when reading.
class MemoryStreamBuffer : public std::streambuf
{
public:
    explicit MemoryStreamBuffer(std::span<char> memory)
    {
        setg(memory.data(), memory.data(), memory.data() + memory.size());
        setp(memory.data(), memory.data() + memory.size());
    }

    [[nodiscard]] std::size_t written() const { return static_cast<std::size_t>(pptr() - pbase()); }

protected:
    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode /*which*/) override
    {
        if (direction != std::ios::cur || offset < eback() - gptr() || offset > egptr() - gptr()) {
            return {off_type(-1)};
        }
        setg(eback(), gptr() + offset, egptr());
        return {gptr() - eback()};
    }
};

} // namespace bench
