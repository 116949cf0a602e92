#include "tools/placing/PointPlacer.h"

#include "tools/console/ProgressBar.h"

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/TimeConversion.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

/// How far a point came on its way into the global frame.
enum class Fate
{
    WithoutTime,
    Outside,
    WithoutPosition,
    Placed
};

bool isFinite(Bv_1_1::Vec3d<float> const& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// Presents a scan to the library, and keeps book of what the library asked about the last point. A point's
/// two indices are its block and its position in the block, so that a scan may have more points than an int
/// can count.
class ScanSource : public RoamscanDataAdapter
{
public:
    static constexpr std::size_t blockSize = 1U << 20;

    explicit ScanSource(ScanPoints const& scan) : scan_(scan) {}

    [[nodiscard]] bool getScanPtTime(int first, int second, int64* time) override
    {
        double const seconds = scan_.times[indexOf(first, second)];
        fate_ = std::isnan(seconds) ? Fate::WithoutTime : Fate::Outside;
        if (fate_ == Fate::WithoutTime) {
            return false;
        }
        *time = integerTime(seconds);
        return true;
    }

    [[nodiscard]] ScanPoint getLocalScanPt(int first, int second, double const* /*parameters*/) override
    {
        ScanPoint const& point = scan_.points[indexOf(first, second)];
        auto const& p = point.position;
        bool const measured = p.x != 0.0F || p.y != 0.0F || p.z != 0.0F;
        fate_ = measured && isFinite(p) ? Fate::Placed : Fate::WithoutPosition;
        return point;
    }

    [[nodiscard]] Fate fate() const { return fate_; } ///< Of the point that was asked for last.

private:
    [[nodiscard]] static std::size_t indexOf(int first, int second)
    {
        return static_cast<std::size_t>(first) * blockSize + static_cast<std::size_t>(second);
    }

    /// A time beyond integer time would wrap around into it, so it goes to the end instead.
    [[nodiscard]] static int64 integerTime(double seconds)
    {
        if (std::abs(seconds) > TimeConversion::largestSeconds) {
            return seconds > 0.0 ? std::numeric_limits<int64>::max() : std::numeric_limits<int64>::min();
        }
        return TimeConversion::convertToIntegerTime(seconds);
    }

    ScanPoints const& scan_;
    Fate fate_ = Fate::WithoutTime;
};

void record(Placement& placement, Fate fate, IRoamscanData::ScanPoint const& global, double time)
{
    auto const& p = global.position;
    if (fate == Fate::WithoutTime) {
        ++placement.withoutTime;
    } else if (fate == Fate::Outside) {
        ++placement.outside;
    } else if (fate == Fate::WithoutPosition || !isFinite(p)) {
        ++placement.withoutPosition;
    } else {
        placement.placed.push_back({p.x, p.y, p.z, global.intensity, time});
    }
}

} // namespace

Placement placePoints(ScanPoints const& scan, Trajectory const& trajectory)
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
        record(placement, source.fate(), global, scan.times[i]);
    }
    return placement;
}

} // namespace oV::Roamscan::tool
