#pragma once

#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>

#include <map>
#include <vector>

namespace oV::Roamscan
{

/// The range of a point's spherical angles over a set of poses of the scanner, as a function of the point's
/// distance. Distances are rounded to bins of one hundredth of the coordinate unit.
///
/// The angles are those of the point in the scanner's frame, in radians: azimuth phi = `atan2(y, x)` from -pi
/// to pi, polar angle theta = `acos(z / r)` from 0 to pi.
///
/// Thread safety: getThreshold() may write, so all use of an object needs exclusive access.
class ROAMSCAN_EXPORT ToleranceThresholds
{
public:
    using Vector = Eigen::Matrix<double, 3, 1>; ///< x, y, z.

    /// The four bounds.
    enum ThresholdName : int
    {
        MaxPhi = 0,   ///< Largest azimuth.
        MinPhi = 1,   ///< Smallest azimuth.
        MaxTheta = 2, ///< Largest polar angle.
        MinTheta = 3  ///< Smallest polar angle.
    };

    /// Computes the bounds of each point over all poses, and interpolates them linearly for the bins between
    /// the points.
    ///
    /// The table has an entry for each bin from the first point's up to, but not including, the last point's.
    /// An entry takes about 350 bytes.
    /// @param trafos the possible poses of the scanner, from the scanner's frame to that of the points
    /// @param points in ascending order of their distance from the origin. The table ends before the distance
    ///     of the last point, which must be the farthest.
    /// @note Of several points in one bin, the last one is used. A point whose distance is NaN or above
    /// 21474836.47 is ignored. The table is empty if there are no points, or if the last one is in the first
    /// bin. Without poses the maxima are -1000 and the minima 1000.
    /// @warning Azimuths do not wrap around: the bounds of a point near phi = pi span almost the full circle.
    ///     The bounds of theta are NaN for a point at the position of a pose.
    ToleranceThresholds(std::vector<TrafoT<double>> const& trafos, std::vector<Vector> const& points);

    /// Copies the table. There is no move: moving copies as well.
    ToleranceThresholds(ToleranceThresholds const& other);
    ~ToleranceThresholds();

    /// Copies the table.
    ToleranceThresholds& operator=(ToleranceThresholds const& other);

    /// Looks up a bound.
    /// @param name which bound
    /// @param distance of a point from the origin, in the coordinate unit
    /// @return the value of the last bin before the one that the distance is rounded to; the value of the
    ///         first bin if there is none before it, or if the distance is NaN
    /// @throws std::out_of_range if the table is empty
    /// @note The value is that of the previous bin, even if the distance has a bin of its own; kept for
    ///     compatibility. For a `name` that is none of the four bounds the result is 0.0, which is also
    ///     inserted into the table, so the function is not const.
    [[nodiscard]] double getThreshold(ThresholdName name, double distance);

private:
    void calculateThresholds(std::vector<TrafoT<double>> const& trafos, std::vector<Vector> const& points);
    void calculateThresholdsForPoint(std::vector<TrafoT<double>> const& trafos, Vector const& point);

    std::map<int, std::map<ThresholdName, double>> table_; // by the bin of the distance
};

} // namespace oV::Roamscan
