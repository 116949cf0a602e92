#include "tools/clouds/BinaryPoints.h"

#include "tools/clouds/RecordBlocks.h"

#include <algorithm>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

class BinaryPoints : public PointReader
{
public:
    BinaryPoints(CloudInput input, PointLayout const& layout, std::uint64_t count, std::endian order)
        : layout_(layout),
          swapped_(order != std::endian::native),
          records_(std::move(input), count, layout.stride())
    {}

    [[nodiscard]] PointLayout const& layout() const override { return layout_; }
    [[nodiscard]] std::uint64_t pointCount() const override { return records_.count(); }
    [[nodiscard]] bool read(RawBlock& raw) override { return records_.read(raw); }

    void convert(RawBlock& raw, PointBlock& points) const override
    {
        points.count = raw.count;
        std::swap(points.records, raw.bytes);
        if (swapped_) {
            for (Field const& field : layout_.fields()) {
                swapBytes(field, points);
            }
        }
    }

private:
    void swapBytes(Field const& field, PointBlock& points) const
    {
        std::size_t const size = sizeOf(field.type);
        char* number = points.records.data() + field.offset;
        for (std::size_t i = 0; i < points.count; ++i, number += layout_.stride()) {
            std::reverse(number, number + size);
        }
    }

    PointLayout layout_;
    bool swapped_;
    RecordBlocks records_;
};

} // namespace

std::unique_ptr<PointReader>
readRecords(CloudInput input, PointLayout const& layout, std::uint64_t count, std::endian order)
{
    return std::make_unique<BinaryPoints>(std::move(input), layout, count, order);
}

} // namespace oV::Roamscan::tool
