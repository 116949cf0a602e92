/// @file
/// Computes how much the direction to a point varies with the position of the scanner.

#include <roamscan/geometry/ToleranceThresholds.h>

#include <cstdio>
#include <vector>

using oV::Roamscan::ToleranceThresholds;
using oV::Roamscan::TrafoT;

int main()
{
    // The scanner may be 2 cm to the left or to the right.
    std::vector<TrafoT<double>> const poses = {TrafoT<double>::Translation({0, -0.02, 0}),
                                               TrafoT<double>::Translation({0, 0.02, 0})};
    // Points ahead of the scanner; the farthest must be the last.
    std::vector<Eigen::Vector3d> const points = {{0.5, 0, 0}, {1, 0, 0}, {2, 0, 0}, {4, 0, 0}, {8, 0, 0}};
    ToleranceThresholds thresholds(poses, points);

    auto const spreadAt = [&thresholds](double distance) {
        return thresholds.getThreshold(ToleranceThresholds::MaxPhi, distance) -
               thresholds.getThreshold(ToleranceThresholds::MinPhi, distance);
    };
    for (double const distance : {0.5, 1.0, 3.0, 7.5}) {
        std::printf("at %.1f m the azimuth varies by %.4f rad\n", distance, spreadAt(distance));
    }
    return spreadAt(0.5) > spreadAt(7.5) ? 0 : 1;
}
