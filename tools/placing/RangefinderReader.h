#pragma once

#include "tools/clouds/PointReader.h"

#include <roamscan/sensors/SensorData.h>

#include <cstddef>
#include <cstdint>

namespace oV::Roamscan::tool
{

/// Reads the points of a rangefinder in the order of its samples: x, y and z as floats, and the time, which
/// is the time stamp of the sample plus the point's own time within it.
class RangefinderReader : public PointReader
{
public:
    /// Keeps a reference to the samples.
    explicit RangefinderReader(SampleMap<mapping::RangefinderData> const& samples);

    [[nodiscard]] PointLayout const& layout() const override { return layout_; }
    [[nodiscard]] std::uint64_t pointCount() const override { return count_; }
    [[nodiscard]] bool read(RawBlock& raw) override;
    void convert(RawBlock& raw, PointBlock& points) const override;

private:
    PointLayout layout_;
    SampleMap<mapping::RangefinderData> const& samples_;
    SampleMap<mapping::RangefinderData>::const_iterator sample_;
    std::size_t next_ = 0; ///< Of the points of the sample.
    std::uint64_t count_ = 0;
};

} // namespace oV::Roamscan::tool
