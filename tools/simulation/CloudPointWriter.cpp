#include "tools/simulation/CloudPointWriter.h"

#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t pointsAtOnce = 4096;

} // namespace

CloudPointWriter::CloudPointWriter(std::ostream& stream, std::filesystem::path const& name)
    : layout_{{"x", FieldType::Float},
              {"y", FieldType::Float},
              {"z", FieldType::Float},
              {"intensity", FieldType::UInt16},
              {"time", FieldType::Double}},
      writer_(stream, name, layout_)
{
    block_.records.reserve(pointsAtOnce * layout_.stride());
}

void CloudPointWriter::add(CloudPoint const& point)
{
    block_.resize(block_.count + 1, layout_);
    char* const record = block_.records.data() + (block_.count - 1) * layout_.stride();
    auto const& fields = layout_.fields();
    store(record + fields[0].offset, point.position.x);
    store(record + fields[1].offset, point.position.y);
    store(record + fields[2].offset, point.position.z);
    store(record + fields[3].offset, point.intensity);
    store(record + fields[4].offset, point.time);
    if (block_.count == pointsAtOnce) {
        writeBlock();
    }
}

void CloudPointWriter::finish()
{
    writeBlock();
    writer_.finish();
}

void CloudPointWriter::writeBlock()
{
    std::vector<char> buffer;
    writer_.write(writer_.convert(block_, {}, buffer), block_.count);
    block_.resize(0, layout_);
}

} // namespace oV::Roamscan::tool
