#include "tools/clouds/LasReader.h"

#include "tools/clouds/LasFormat.h"
#include "tools/clouds/LasHeader.h"
#include "tools/clouds/RecordBlocks.h"

#include <string>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

/// Where a field of the layout comes from.
struct Source
{
    FieldType type = FieldType::UInt8; ///< In the file.
    std::size_t byte = 0;
    unsigned shift = 0;
    unsigned bits = 0; ///< 0 for a whole number.
    bool isScaled = false;
    double scale = 1.0;
    double offset = 0.0;
};

class LasReader : public PointReader
{
public:
    LasReader(CloudInput input, LasHeader const& header)
        : records_(std::move(input), header.pointCount, header.recordSize)
    {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Source const source{
                FieldType::Int32, 4 * axis, 0, 0, true, header.scale[axis], header.offset[axis]};
            add(std::string(1, "xyz"[axis]), source);
        }
        for (LasDimension const& dimension : lasDimensions(header.format)) {
            add(dimension.name, {dimension.type, dimension.byte, dimension.shift, dimension.bits});
        }
        for (LasExtraField const& extra : header.extra) {
            add(freeName(extra.name),
                {extra.type, extra.byte, 0, 0, extra.isScaled, extra.scale, extra.offset});
        }
    }

    [[nodiscard]] PointLayout const& layout() const override { return layout_; }
    [[nodiscard]] std::uint64_t pointCount() const override { return records_.count(); }
    [[nodiscard]] bool read(RawBlock& raw) override { return records_.read(raw); }

    void convert(RawBlock& raw, PointBlock& points) const override
    {
        points.resize(raw.count, layout_);
        for (std::size_t i = 0; i < sources_.size(); ++i) {
            convertField(raw, sources_[i], layout_.fields()[i], points);
        }
    }

private:
    void add(std::string name, Source const& source)
    {
        layout_.add(std::move(name), source.isScaled ? FieldType::Double : source.type);
        sources_.push_back(source);
    }

    /// Extra bytes may have the name of another field, or none.
    [[nodiscard]] std::string freeName(std::string name) const
    {
        name = name.empty() ? "extra" : name;
        while (layout_.find(name) != nullptr) {
            name += "_extra";
        }
        return name;
    }

    void convertField(RawBlock const& raw, Source const& source, Field const& field, PointBlock& points) const
    {
        char const* from = raw.bytes.data() + source.byte;
        char* to = points.records.data() + field.offset;
        auto const forEach = [&](auto const& convertOne) {
            for (std::size_t i = 0; i < raw.count; ++i, from += records_.recordSize(), to += layout_.stride())
            {
                convertOne();
            }
        };
        withType(source.type, [&](auto zero) {
            using Number = decltype(zero);
            if (source.bits > 0) {
                unsigned const mask = (1U << source.bits) - 1U;
                forEach([&] {
                    unsigned const byte = load<std::uint8_t>(from);
                    store(to, static_cast<std::uint8_t>((byte >> source.shift) & mask));
                });
            } else if (source.isScaled) {
                forEach([&] {
                    store(to,
                          static_cast<double>(loadLittleEndian<Number>(from)) * source.scale + source.offset);
                });
            } else {
                forEach([&] { store(to, loadLittleEndian<Number>(from)); });
            }
        });
    }

    PointLayout layout_;
    std::vector<Source> sources_; // one for each field
    RecordBlocks records_;
};

} // namespace

std::unique_ptr<PointReader> openLas(CloudInput input)
{
    LasHeader const header = readLasHeader(input);
    return std::make_unique<LasReader>(std::move(input), header);
}

} // namespace oV::Roamscan::tool
