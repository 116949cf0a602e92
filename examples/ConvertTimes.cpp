/// @file
/// Converts between the representations of time, and composes and interpolates poses.

#include <roamscan/time/TimeConversion.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/time/TrafoT.h>

#include <cmath>
#include <cstdio>

#if defined(_WIN32)
#include <windows.h> // for the members of _ULARGE_INTEGER
#endif

using oV::Roamscan::IntegerTime;
using oV::Roamscan::TrafoT;
namespace TimeConversion = oV::Roamscan::TimeConversion;

int main()
{
    IntegerTime const ticks = TimeConversion::convertToIntegerTime(12.345678912); // rounded to 10 ns
    auto const microseconds = TimeConversion::convertToTxmTime(ticks);            // truncated to 1 us
    std::printf("%.8f s, %lld us\n",
                TimeConversion::convertToSeconds(ticks),
                static_cast<long long>(microseconds.QuadPart));

    // The scanner is 2 m above the device. The device stands at x = 5 m and has turned 90 degrees to the
    // left.
    double const half = std::sqrt(0.5);
    auto const deviceFromScanner = TrafoT<double>::Translation({0, 0, 2});
    TrafoT<double> const worldFromDevice({5, 0, 0}, {half, 0, 0, half}, true); // x, y, z; then w, x, y, z
    auto const worldFromScanner = worldFromDevice * deviceFromScanner;
    Eigen::Vector3d const point = worldFromScanner * Eigen::Vector3d(1, 0, 0);
    std::printf("%.1f %.1f %.1f\n", point.x(), point.y(), point.z());

    // A third of the way from the start: a third of the path, and a third of the turn.
    auto const third = TrafoT<double>::Identity().interpolate(worldFromDevice, 1.0 / 3.0);
    Eigen::Vector3d const ahead = third.rotation() * Eigen::Vector3d::UnitX();
    std::printf("x = %.2f m, turned by %.0f degrees\n",
                third.translation().x(),
                std::atan2(ahead.y(), ahead.x()) * 180.0 / std::acos(-1.0));
    return ticks == 1'234'567'891 && microseconds.QuadPart == 12'345'678 ? 0 : 1;
}
