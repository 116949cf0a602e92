#pragma once

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace support
{

/// The bit pattern of a number. It distinguishes -0.0 from 0.0, and NaNs from each other.
inline std::uint64_t bits(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

/// Whether two poses are bitwise equal, including the flag.
inline testing::AssertionResult sameBits(oV::Roamscan::TrafoT<double> const& a,
                                         oV::Roamscan::TrafoT<double> const& b)
{
    auto const x = a.serialize();
    auto const y = b.serialize();
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (bits(x[i]) != bits(y[i])) {
            return testing::AssertionFailure() << "value " << i << " is " << x[i] << " and " << y[i];
        }
    }
    if (a.valid() != b.valid()) {
        return testing::AssertionFailure() << "valid is " << a.valid() << " and " << b.valid();
    }
    return testing::AssertionSuccess();
}

} // namespace support
