#include "tools/placing/RangefinderReader.h"

#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t pointsAtOnce = 16384;

} // namespace

RangefinderReader::RangefinderReader(SampleMap<mapping::RangefinderData> const& samples)
    : layout_{{"x", FieldType::Float},
              {"y", FieldType::Float},
              {"z", FieldType::Float},
              {"time", FieldType::Double}},
      samples_(samples),
      sample_(samples.begin())
{
    for (auto const& [tick, sample] : samples) {
        count_ += sample->getRanges().get().size();
    }
}

bool RangefinderReader::read(RawBlock& raw)
{
    raw.bytes.resize(pointsAtOnce * layout_.stride());
    raw.count = 0;
    auto const& fields = layout_.fields();
    char* record = raw.bytes.data();
    while (raw.count < pointsAtOnce && sample_ != samples_.end()) {
        auto const& points = sample_->second->getRanges().get();
        if (next_ == points.size()) {
            ++sample_;
            next_ = 0;
            continue;
        }
        mapping::TimedRangefinderPoint const& point = points[next_++];
        store(record + fields[0].offset, point.position.x);
        store(record + fields[1].offset, point.position.y);
        store(record + fields[2].offset, point.position.z);
        store(record + fields[3].offset,
              sample_->second->getTimeStamp().get() + static_cast<double>(point.time));
        record += layout_.stride();
        ++raw.count;
    }
    raw.bytes.resize(raw.count * layout_.stride());
    return raw.count > 0;
}

void RangefinderReader::convert(RawBlock& raw, PointBlock& points) const
{
    points.count = raw.count;
    std::swap(points.records, raw.bytes);
}

} // namespace oV::Roamscan::tool
