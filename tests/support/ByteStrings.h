#pragma once

#include <roamscan/frame/platform/LittleEndian.h>

#include <bit>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <streambuf>
#include <string>

/// Literal bytes of files, for tests.
namespace support
{

inline std::string bytes(std::initializer_list<int> values)
{
    std::string result;
    for (int const value : values) {
        result.push_back(static_cast<char>(value));
    }
    return result;
}

template <std::unsigned_integral Value>
std::string littleEndian(Value value)
{
    auto const bytes = oV::Roamscan::toLittleEndian(value);
    return {bytes.begin(), bytes.end()};
}

inline std::string u64(std::uint64_t value)
{
    return littleEndian(value);
}

inline std::string u32(std::uint32_t value)
{
    return littleEndian(value);
}

inline std::string u16(std::uint16_t value)
{
    return littleEndian(value);
}

inline std::string f64(std::initializer_list<double> values)
{
    std::string result;
    for (double const value : values) {
        result += u64(std::bit_cast<std::uint64_t>(value));
    }
    return result;
}

inline std::string f32(std::initializer_list<float> values)
{
    std::string result;
    for (float const value : values) {
        result += u32(std::bit_cast<std::uint32_t>(value));
    }
    return result;
}

/// A buffer with its length prefix.
inline std::string lengthPrefixed(std::string const& buffer)
{
    return u64(buffer.size()) + buffer;
}

inline std::string withU16(std::string stream, std::size_t position, std::uint16_t value)
{
    return stream.replace(position, 2, u16(value));
}

inline std::string withU32(std::string stream, std::size_t position, std::uint32_t value)
{
    return stream.replace(position, 4, u32(value));
}

/// A stream buffer of limited capacity that counts its flushes.
class LimitedBuffer : public std::streambuf
{
public:
    explicit LimitedBuffer(std::size_t room) : room_(room) {}
    [[nodiscard]] int flushes() const { return flushes_; }

protected:
    int_type overflow(int_type character) override
    {
        if (room_ == 0) {
            return traits_type::eof();
        }
        --room_;
        return character;
    }
    int sync() override
    {
        ++flushes_;
        return 0;
    }

private:
    std::size_t room_;
    int flushes_ = 0;
};

} // namespace support
