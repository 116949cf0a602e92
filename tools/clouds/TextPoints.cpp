#include "tools/clouds/TextPoints.h"

#include "tools/clouds/TextBlocks.h"

#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

class TextPoints : public PointReader
{
public:
    TextPoints(CloudInput input, PointLayout const& layout, Separator separator, TextLines const& lines)
        : count_(lines.count),
          converter_(input.name, layout, separator),
          text_(std::move(input), lines.first, lines.toTheEnd ? TextBlocks::allLines : lines.count)
    {}

    [[nodiscard]] PointLayout const& layout() const override { return converter_.layout(); }
    [[nodiscard]] std::uint64_t pointCount() const override { return count_; }
    [[nodiscard]] bool read(RawBlock& raw) override { return text_.read(raw); }
    void convert(RawBlock& raw, PointBlock& points) const override { converter_.convert(raw, points); }

private:
    std::uint64_t count_;
    LineConverter converter_;
    TextBlocks text_;
};

} // namespace

std::unique_ptr<PointReader>
readLines(CloudInput input, PointLayout const& layout, Separator separator, TextLines const& lines)
{
    return std::make_unique<TextPoints>(std::move(input), layout, separator, lines);
}

} // namespace oV::Roamscan::tool
