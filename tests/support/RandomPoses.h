#pragma once

#include <roamscan/time/TrafoT.h>

#include <cstdint>
#include <random>

namespace support
{

/// Random poses for tests of properties. The seed is part of the test, so failures are repeatable.
class RandomPoses
{
public:
    explicit RandomPoses(std::uint64_t seed) : generator_(seed) {}

    double number(double from, double to)
    {
        return std::uniform_real_distribution<double>(from, to)(generator_);
    }

    template <typename T = double>
    oV::Roamscan::TrafoT<T> pose(double extent = 10.0)
    {
        Eigen::Matrix<double, 3, 1> const translation(
            number(-extent, extent), number(-extent, extent), number(-extent, extent));
        Eigen::Quaternion<double> const rotation =
            Eigen::Quaternion<double>(number(-1, 1), number(-1, 1), number(-1, 1), number(-1, 1))
                .normalized();
        return {translation.cast<T>(), rotation.cast<T>(), true};
    }

    std::mt19937_64& generator() { return generator_; }

private:
    std::mt19937_64 generator_;
};

} // namespace support
