#pragma once

#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>

#include <map>
#include <vector>

namespace oV::Roamscan
{

/// How far the spherical angles of a point may stray while the pose of the scanner varies, by the distance of
/// the point. Distances come in bins of one hundredth of the coordinate unit, rounded to the nearest one.
///
/// The angles are those of a point in the frame of a pose, in radians: the azimuth phi, from -pi to pi, is
/// `atan2(y, x)`, the polar angle theta, from 0 to pi, is `acos(z / r)`.
///
/// The table is made once, at construction. Looking a bound up may write, so threads that share an object
/// need the caller's own exclusion.
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

    /// Finds the bounds of each sample point over all poses, and draws straight lines through them from bin
    /// to bin of distance.
    ///
    /// The table has an entry for each bin from the nearest point's to the farthest one's, but none as far as
    /// the last point or farther: it is the last of the points that says how far the table goes. It takes
    /// some 350 bytes of memory for each bin. Of several points in one bin, the last counts. A point whose
    /// distance is NaN or beyond 21474836.47 is in no bin and left out. Without poses the largest angles are
    /// -1000 and the smallest 1000. The table is empty without points, and if the last one is no farther away
    /// than the first bin.
    ///
    /// No azimuth is turned across pi and -pi. A point at a pose's own place has no polar angle there: both
    /// its bounds of theta are NaN.
    /// @param trafos  the allowed poses of the scanner, scanner frame to the frame of the points
    /// @param points  at growing distance from the origin, the farthest one last
    ToleranceThresholds(std::vector<TrafoT<double>> const& trafos, std::vector<Vector> const& points);

    /// Copies the table, also from an object that is about to go.
    ToleranceThresholds(ToleranceThresholds const& other);
    ~ToleranceThresholds();

    /// Copies the table.
    ToleranceThresholds& operator=(ToleranceThresholds const& other);

    /// A bound for points at a distance.
    ///
    /// Callers may rely on the answer being one bin behind: it is the value of the bin before the first one
    /// at the distance or beyond it. Nearer than the table, and for NaN, it is the value of the first bin;
    /// farther, of the last one. A name that an entry lacks is entered with 0.0; this is why it is not const.
    /// @throws std::out_of_range if the table is empty
    [[nodiscard]] double getThreshold(ThresholdName name, double distance);

private:
    void calculateThresholds(std::vector<TrafoT<double>> const& trafos, std::vector<Vector> const& points);
    void calculateThresholdsForPoint(std::vector<TrafoT<double>> const& trafos, Vector const& point);

    std::map<int, std::map<ThresholdName, double>> table_; // by the bin of the distance
};

} // namespace oV::Roamscan
