/// @file
/// Presents a recording to the library and places its scan points in the global frame.

#include <roamscan/geometry/RoamscanDataAdapter.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>

#include <cstddef>
#include <cstdio>
#include <utility>
#include <vector>

using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::RoamscanDataAdapter;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;

namespace
{

struct Measurement
{
    double seconds;
    float x, y, z; // in the scanner's frame
};

// The second index is the index of the measurement; this recording does not use the first one.
class Recording final : public RoamscanDataAdapter
{
public:
    explicit Recording(std::vector<Measurement> measurements) : measurements_(std::move(measurements)) {}

    bool getScanPtTime(int /*first*/, int second, int64* time) override
    {
        *time = oV::Roamscan::TimeConversion::convertToIntegerTime(at(second).seconds);
        return true;
    }

    ScanPoint getLocalScanPt(int /*first*/, int second, double const* /*parameters*/) override
    {
        auto const& measurement = at(second);
        ScanPoint point;
        point.position = {measurement.x, measurement.y, measurement.z};
        point.intensity = 1000;
        return point;
    }

    [[nodiscard]] int size() const { return static_cast<int>(measurements_.size()); }

private:
    [[nodiscard]] Measurement const& at(int index) const
    {
        return measurements_[static_cast<std::size_t>(index)];
    }

    std::vector<Measurement> measurements_;
};

} // namespace

int main()
{
    // The scanner moves along x at a height of 1 m, with a wall to its left at y = 2 m.
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(0.0), TrafoT<double>::Translation({0, 0, 1}))
                                .addPose(TimeStamp(2.0), TrafoT<double>::Translation({2, 0, 1}))
                                .build();
    Recording recording({{0.5, 0, 2, 0}, {1.0, 0, 2, 0.5}, {1.5, 0, 2, 1}, {2.5, 0, 2, 0}});

    for (int i = 0; i < recording.size(); ++i) {
        auto const point = recording.getGlobalScanPt(0, i, trajectory, nullptr);
        if (point.intensity == 0) {
            std::printf("point %d: no pose at its time\n", i);
            continue;
        }
        std::printf("point %d: %.2f %.2f %.2f\n",
                    i,
                    static_cast<double>(point.position.x),
                    static_cast<double>(point.position.y),
                    static_cast<double>(point.position.z));
    }
    return 0;
}
