#include "tools/placing/CloudPlacing.h"

#include "tools/console/ProgressBar.h"
#include "tools/placing/OrderedPipeline.h"

#include <roamscan/time/EigenConversion.h>

#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

/// Points on their way from the reader to the writer.
struct Block
{
    RawBlock raw;
    PointBlock scan;
    PlacedBlock placed;
    std::vector<char> buffer;
    std::span<char const> converted; ///< Of the buffer or of the placed points.
    double sumOfSquaredErrors = 0.0;
};

} // namespace

CloudPlacing placeCloud(PointReader& reader, PointPlacer const& placer, PlacedUses const& uses)
{
    CloudPlacing result;
    ProgressBar progress("placing", reader.pointCount());
    auto const read = [&](Block& block) { return reader.read(block.raw); };
    auto const convert = [&](Block& block) {
        reader.convert(block.raw, block.scan);
        placer.place(block.scan, block.placed);
        if (uses.writer != nullptr) {
            block.converted = uses.writer->convert(block.placed.points, block.placed.times, block.buffer);
        }
        block.sumOfSquaredErrors = 0.0;
        if (uses.error) {
            for (Bv_1_1::Vec3d<double> const& place : block.placed.places) {
                double const distance = uses.error(toEigen(place));
                block.sumOfSquaredErrors += distance * distance;
            }
        }
    };
    auto const write = [&](Block& block) {
        if (uses.writer != nullptr) {
            uses.writer->write(block.converted, block.placed.points.count);
        }
        if (uses.look) {
            uses.look(block.placed.places);
        }
        result.counts += block.placed.counts;
        result.sumOfSquaredErrors += block.sumOfSquaredErrors;
        progress.advanceTo(result.counts.points);
    };
    OrderedPipeline<Block, decltype(read), decltype(convert), decltype(write)>(read, convert, write)
        .run(pipelineThreads());
    return result;
}

} // namespace oV::Roamscan::tool
