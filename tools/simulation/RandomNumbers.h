#pragma once

#include <cstdint>

namespace oV::Roamscan::tool
{

/// Counter-based random numbers: the same seed, position and purpose give the same number on every machine,
/// in any order of calls. The arithmetic is exact and does not depend on the standard library.
class RandomNumbers
{
public:
    explicit RandomNumbers(std::uint64_t seed) : seed_(seed) {}

    /// 64 random bits.
    [[nodiscard]] std::uint64_t bits(std::uint64_t position, std::uint64_t purpose) const
    {
        return mixed(mixed(seed_ + increment) ^ mixed(position * increment + purpose));
    }

    /// Uniform, from 0 to below 1.
    [[nodiscard]] double uniform(std::uint64_t position, std::uint64_t purpose) const
    {
        return static_cast<double>(bits(position, purpose) >> 11) * 0x1p-53;
    }

    /// Uniform, from `low` to below `high`.
    [[nodiscard]] double between(double low, double high, std::uint64_t position, std::uint64_t purpose) const
    {
        return low + (high - low) * uniform(position, purpose);
    }

    /// Normally distributed with mean 0 and deviation 1, cut off at 6: the sum of twelve uniform numbers.
    [[nodiscard]] double normal(std::uint64_t position, std::uint64_t purpose) const
    {
        constexpr int words = 3;
        constexpr int parts = 4;
        std::int64_t sum = 0;
        for (std::uint64_t word = 0; word < words; ++word) {
            std::uint64_t const drawn = bits(position, purpose + (word << 32));
            for (int part = 0; part < parts; ++part) {
                sum += static_cast<std::int64_t>((drawn >> (16 * part)) & 0xFFFFU);
            }
        }
        constexpr double mean = words * parts * 65535.0 / 2.0;
        return (static_cast<double>(sum) - mean) / 65536.0;
    }

private:
    static constexpr std::uint64_t increment = 0x9E3779B97F4A7C15U; // 2^64 over the golden ratio

    /// The finalizer of SplitMix64.
    [[nodiscard]] static std::uint64_t mixed(std::uint64_t x)
    {
        x += increment;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
        return x ^ (x >> 31);
    }

    std::uint64_t seed_;
};

} // namespace oV::Roamscan::tool
