/// @file
/// Reads any bytes as a cloud. The first byte selects the format by the file's name; the content decides
/// otherwise. What is read is written in every format and, if it has a time, read back with as many points.

#include "StreamInput.h"
#include "tools/clouds/CloudFile.h"
#include "tools/console/ToolError.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using fuzz::require;
using namespace oV::Roamscan::tool;

struct Cloud
{
    PointLayout layout;
    PointBlock points;
};

std::unique_ptr<PointReader> open(std::string const& bytes, char const* name, TextSettings const& text)
{
    return openCloud({std::make_unique<std::istringstream>(bytes), bytes.size(), name}, text);
}

Cloud read(std::string const& bytes, char const* name, TextSettings const& text = {})
{
    auto const reader = open(bytes, name, text);
    Cloud cloud{reader->layout(), {}};
    RawBlock raw;
    PointBlock block;
    while (reader->read(raw)) {
        reader->convert(raw, block);
        require(block.records.size() == block.count * cloud.layout.stride(), "a block holds its points");
        cloud.points.count += block.count;
        cloud.points.records.insert(cloud.points.records.end(), block.records.begin(), block.records.end());
    }
    require(cloud.points.count == reader->pointCount(), "the points are as many as the reader says");
    return cloud;
}

std::string write(CloudFormat format, char const* name, Cloud const& cloud)
{
    std::ostringstream stream;
    auto const writer = makeCloudWriter(format, stream, name, cloud.layout, {});
    std::vector<char> buffer;
    std::vector<double> const times(cloud.points.count);
    writer->write(writer->convert(cloud.points, times, buffer), cloud.points.count);
    writer->finish();
    return stream.str();
}

/// Whether the fields can be told apart in a header.
bool haveDistinctNames(PointLayout const& layout)
{
    for (Field const& field : layout.fields()) {
        if (layout.find(field.name) != &field) {
            return false;
        }
    }
    return true;
}

void writeAndRead(Cloud const& cloud)
{
    constexpr std::array formats{std::pair(CloudFormat::Ply, "a.ply"),
                                 std::pair(CloudFormat::Pcd, "a.pcd"),
                                 std::pair(CloudFormat::Las, "a.las")};
    for (auto const& [format, name] : formats) {
        std::string bytes;
        try {
            bytes = write(format, name, cloud);
        } catch (ToolError const&) {
            continue; // the format cannot hold it
        }
        require(read(bytes, name).points.count == cloud.points.count, "what was written is read back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    constexpr std::array names{"scan.ply", "scan.pcd", "scan.las", "scan.csv"};
    if (size == 0) {
        return 0;
    }
    std::string const bytes(data + 1, data + size);
    TextSettings text;
    if (data[0] / names.size() % 2 == 1) {
        text.columns = {"x", "y", "z", "time"};
    }
    try {
        Cloud const cloud = read(bytes, names[data[0] % names.size()], text);
        if (haveDistinctNames(cloud.layout) && cloud.layout.fields().size() < 100) {
            writeAndRead(cloud);
        }
    } catch (ToolError const&) { // refused with a reason
    }
    return 0;
}
