#include "tools/placing/PointPlacer.h"

#include "tools/console/ProgressBar.h"

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/TimeConversion.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

/// What the library asked about a point, and with which result.
enum class Outcome
{
    WithoutTime,
    Outside,
    WithoutPosition,
    Placed
};

/// Gives the library access to a scan, and records the outcome of the last point. The two indices of a point
/// are its block and its index in the block, so that a scan may have more points than an int can count.
class ScanSource : public RoamscanDataAdapter
{
public:
    static constexpr std::size_t blockSize = 1U << 20;

    explicit ScanSource(std::vector<CloudPoint> const& scan) : scan_(scan) {}

    [[nodiscard]] bool getScanPtTime(int first, int second, int64* time) override
    {
        double const seconds = scan_[indexOf(first, second)].time;
        outcome_ = std::isnan(seconds) ? Outcome::WithoutTime : Outcome::Outside;
        if (outcome_ == Outcome::WithoutTime) {
            return false;
        }
        *time = integerTime(seconds);
        return true;
    }

    [[nodiscard]] ScanPoint getLocalScanPt(int first, int second, double const* /*parameters*/) override
    {
        ScanPoint const& point = scan_[indexOf(first, second)];
        auto const position = toEigen(point.position);
        bool const isMeasured = position.allFinite() && !position.isZero(0.0F);
        outcome_ = isMeasured ? Outcome::Placed : Outcome::WithoutPosition;
        return point;
    }

    [[nodiscard]] Outcome outcome() const { return outcome_; } ///< Of the last point.

private:
    [[nodiscard]] static std::size_t indexOf(int first, int second)
    {
        return static_cast<std::size_t>(first) * blockSize + static_cast<std::size_t>(second);
    }

    /// Times out of the range of integer time are clamped.
    [[nodiscard]] static int64 integerTime(double seconds)
    {
        if (std::abs(seconds) > TimeConversion::largestSeconds) {
            return seconds > 0.0 ? std::numeric_limits<int64>::max() : std::numeric_limits<int64>::min();
        }
        return TimeConversion::convertToIntegerTime(seconds);
    }

    std::vector<CloudPoint> const& scan_;
    Outcome outcome_ = Outcome::WithoutTime;
};

void record(Placement& placement, Outcome outcome, IRoamscanData::ScanPoint const& global, double time)
{
    if (outcome == Outcome::WithoutTime) {
        ++placement.withoutTime;
    } else if (outcome == Outcome::Outside) {
        ++placement.outside;
    } else if (outcome == Outcome::WithoutPosition || !toEigen(global.position).allFinite()) {
        ++placement.withoutPosition;
    } else {
        placement.placed.push_back({global, time});
    }
}

} // namespace

Placement placePoints(std::vector<CloudPoint> const& scan, Trajectory const& trajectory)
{
    Placement placement;
    placement.placed.reserve(scan.size());
    ScanSource source(scan);
    ProgressBar progress("placing", scan.size());
    for (std::size_t i = 0; i < scan.size(); ++i) {
        progress.advanceTo(i);
        auto const first = static_cast<int>(i / ScanSource::blockSize);
        auto const second = static_cast<int>(i % ScanSource::blockSize);
        auto const global = source.getGlobalScanPt(first, second, trajectory, nullptr);
        record(placement, source.outcome(), global, scan[i].time);
    }
    return placement;
}

} // namespace oV::Roamscan::tool
