#include "tools/clouds/LasWriter.h"

#include "tools/clouds/LasFormat.h"
#include "tools/clouds/RecordCopy.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <limits>
#include <ostream>
#include <string_view>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t longestName = 32;
constexpr std::size_t mostExtraFields = 65535 / lasDescriptorSize;

bool isColour(std::string_view name)
{
    return sameName(name, "red") || sameName(name, "green") || sameName(name, "blue") ||
           sameName(name, "nir");
}

/// Whether the values of a field fit a dimension without a change.
bool fits(Field const& field, LasDimension const& dimension)
{
    bool const isWidened = field.type == FieldType::UInt8 && dimension.type == FieldType::UInt16;
    return sameName(field.name, dimension.name) && (field.type == dimension.type || isWidened);
}

bool hasColour(PointLayout const& layout, char const* name)
{
    Field const* const field = layout.find(name);
    return field != nullptr && (field->type == FieldType::UInt8 || field->type == FieldType::UInt16);
}

void putText(std::vector<char>& bytes, std::size_t at, std::string_view text)
{
    std::ranges::copy(text, bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

/// The number of a type in the descriptors of extra bytes.
std::uint8_t extraType(FieldType type)
{
    constexpr std::array<std::uint8_t, 10> numbers{2, 1, 4, 3, 6, 5, 8, 7, 9, 10};
    return numbers[static_cast<std::size_t>(type)];
}

} // namespace

LasWriter::LasWriter(std::ostream& stream,
                     std::filesystem::path name,
                     PointLayout layout,
                     LasSettings settings)
    : stream_(stream), name_(std::move(name)), layout_(std::move(layout)), settings_(std::move(settings))
{
    auto const position = layout_.findVector("x", "y", "z");
    if (!position) {
        throw fileError(name_, "LAS needs points with x, y and z");
    }
    position_ = *position;
    chooseFormat();
    planRecord();
    writeHeader();
}

void LasWriter::chooseFormat()
{
    bool const coloured =
        hasColour(layout_, "red") && hasColour(layout_, "green") && hasColour(layout_, "blue");
    Field const* const rank = layout_.find("scan_angle_rank");
    if (rank != nullptr && rank->type == FieldType::Int8) {
        format_ = coloured ? 3 : 1;
        returnBits_ = 3;
    } else {
        format_ = !coloured ? 6 : hasColour(layout_, "nir") ? 8 : 7;
    }
}

void LasWriter::planRecord()
{
    std::vector<LasDimension> dimensions = lasDimensions(format_);
    auto const time = std::ranges::find(dimensions, std::string_view("gps_time"), &LasDimension::name);
    timeByte_ = time->byte;
    dimensions.erase(time);
    recordSize_ = lasRecordSize(format_);
    for (Field const& field : layout_.fields()) {
        bool const isPosition = std::ranges::find(position_, field.offset, &Field::offset) != position_.end();
        bool const isTime = field.name == settings_.secondsField && field.type == FieldType::Double;
        if (isPosition || isTime) {
            continue;
        }
        auto const dimension =
            std::ranges::find_if(dimensions, [&](LasDimension const& d) { return fits(field, d); });
        if (dimension != dimensions.end()) {
            bool const isScaled = isColour(dimension->name) && field.type == FieldType::UInt8;
            targets_.push_back(
                {field, dimension->type, dimension->byte, dimension->shift, dimension->bits, isScaled});
            dimensions.erase(dimension);
            continue;
        }
        if (field.name.size() > longestName) {
            throw fileError(name_,
                            "LAS has names of " + std::to_string(longestName) +
                                " bytes at most; the property " + excerpt(field.name) +
                                " has a longer one; write another format");
        }
        extra_.push_back({field, field.type, recordSize_});
        recordSize_ += sizeOf(field.type);
    }
    if (extra_.size() > mostExtraFields || recordSize_ > std::numeric_limits<std::uint16_t>::max()) {
        throw fileError(name_,
                        "LAS has room for " + std::to_string(mostExtraFields) + " extra properties, not " +
                            std::to_string(extra_.size()) + "; write another format");
    }
}

std::span<char const>
LasWriter::convert(PointBlock const& points, std::span<double const> times, std::vector<char>& buffer) const
{
    if (points.count == 0) {
        return {};
    }
    buffer.assign(points.count * recordSize_, '\0');
    convertPositions(points, buffer);
    for (std::size_t i = 0; i < times.size(); ++i) {
        storeLittleEndian(buffer.data() + i * recordSize_ + timeByte_, times[i]);
    }
    for (Target const& target : targets_) {
        convertField(target, points, buffer);
    }
    for (Target const& target : extra_) {
        convertField(target, points, buffer);
    }
    return buffer;
}

void LasWriter::convertPositions(PointBlock const& points, std::vector<char>& buffer) const
{
    std::vector<double> values(points.count);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        points.read(position_[axis], layout_.stride(), values.data());
        char* to = buffer.data() + 4 * axis;
        for (double const value : values) {
            double const steps = std::round((value - settings_.origin[axis]) / settings_.resolution);
            if (!(std::abs(steps) <= std::numeric_limits<std::int32_t>::max())) {
                throw fileError(name_,
                                "the coordinate " + fixed(value, 3) + " m is too far from " +
                                    fixed(settings_.origin[axis], 3) + " m for LAS in steps of " +
                                    fixed(settings_.resolution, 6) + " m; write another format");
            }
            storeLittleEndian(to, static_cast<std::int32_t>(steps));
            to += recordSize_;
        }
    }
}

void LasWriter::convertField(Target const& target, PointBlock const& points, std::vector<char>& buffer) const
{
    char const* from = points.records.data() + target.field.offset;
    char* to = buffer.data() + target.byte;
    auto const forEach = [&](auto const& convertOne) {
        for (std::size_t i = 0; i < points.count; ++i, from += layout_.stride(), to += recordSize_) {
            convertOne();
        }
    };
    if (target.bits > 0) {
        forEach([&] {
            unsigned const value = load<std::uint8_t>(from);
            if (value >> target.bits != 0) {
                throw fileError(name_,
                                "LAS has " + std::to_string(target.bits) + " bits for the " +
                                    plain(target.field.name) + ", too few for the value " +
                                    std::to_string(value) + "; write another format");
            }
            store(to, static_cast<std::uint8_t>(load<std::uint8_t>(to) | (value << target.shift)));
        });
    } else if (target.type != target.field.type) {
        unsigned const factor = target.isColour ? 256 : 1;
        forEach(
            [&] { storeLittleEndian(to, static_cast<std::uint16_t>(factor * load<std::uint8_t>(from))); });
    } else {
        withType(target.type,
                 [&](auto zero) { forEach([&] { storeLittleEndian(to, load<decltype(zero)>(from)); }); });
    }
}

void LasWriter::write(std::span<char const> converted, std::size_t points)
{
    unsigned const returnMask = (1U << returnBits_) - 1U;
    for (std::size_t i = 0; i < points; ++i) {
        char const* const record = converted.data() + i * recordSize_;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            auto const value = loadLittleEndian<std::int32_t>(record + 4 * axis);
            bool const isFirst = count_ == 0 && i == 0;
            lowest_[axis] = isFirst ? value : std::min(lowest_[axis], value);
            highest_[axis] = isFirst ? value : std::max(highest_[axis], value);
        }
        unsigned const number = load<std::uint8_t>(record + 14) & returnMask;
        countByReturn_[std::max(number, 1U) - 1] += 1;
        auto const time = loadLittleEndian<double>(record + timeByte_);
        earliest_ = std::min(earliest_, time);
        latest_ = std::max(latest_, time);
    }
    writeBytes(stream_, converted, name_);
    count_ += points;
}

void LasWriter::finish()
{
    stream_.seekp(0);
    writeHeader();
    stream_.seekp(0, std::ios::end);
}

void LasWriter::writeHeader()
{
    writeBytes(stream_, header(), name_);
    writeBytes(stream_, extraBytesRecord(), name_);
}

std::vector<char> LasWriter::header() const
{
    std::vector<char> bytes(lasHeaderSize);
    auto const put = [&bytes](std::size_t at, auto number) { storeLittleEndian(&bytes[at], number); };
    std::size_t const dataOffset = lasHeaderSize + extraBytesRecord().size();
    constexpr double secondsOfWeek = 604'800.0;
    bool const isWeekTime = earliest_ >= 0.0 && latest_ < secondsOfWeek;
    std::uint16_t const wellKnownText = format_ >= 6 ? 16 : 0;

    putText(bytes, 0, "LASF");
    put(6, static_cast<std::uint16_t>((isWeekTime ? 0 : 1) | wellKnownText));
    put(24, std::uint8_t{1});
    put(25, std::uint8_t{4});
    putText(bytes, 26, "roamscan");
    putText(bytes, 58, "roamscan place");
    put(94, static_cast<std::uint16_t>(lasHeaderSize));
    put(96, static_cast<std::uint32_t>(dataOffset));
    put(100, static_cast<std::uint32_t>(extra_.empty() ? 0 : 1));
    put(104, static_cast<std::uint8_t>(format_));
    put(105, static_cast<std::uint16_t>(recordSize_));
    bool const isLegacy = format_ < 6 && count_ <= std::numeric_limits<std::uint32_t>::max();
    put(107, static_cast<std::uint32_t>(isLegacy ? count_ : 0));
    for (std::size_t i = 0; i < 5; ++i) {
        put(111 + 4 * i, static_cast<std::uint32_t>(isLegacy ? countByReturn_[i] : 0));
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        auto const metres = [&](std::int32_t steps) {
            return static_cast<double>(steps) * settings_.resolution + settings_.origin[axis];
        };
        put(131 + 8 * axis, settings_.resolution);
        put(155 + 8 * axis, settings_.origin[axis]);
        put(179 + 16 * axis, metres(highest_[axis]));
        put(187 + 16 * axis, metres(lowest_[axis]));
    }
    put(247, count_);
    for (std::size_t i = 0; i < countByReturn_.size(); ++i) {
        put(255 + 8 * i, countByReturn_[i]);
    }
    return bytes;
}

std::vector<char> LasWriter::extraBytesRecord() const
{
    if (extra_.empty()) {
        return {};
    }
    std::vector<char> bytes(lasRecordHeaderSize + extra_.size() * lasDescriptorSize);
    putText(bytes, 2, "LASF_Spec");
    storeLittleEndian(&bytes[18], std::uint16_t{4});
    storeLittleEndian(&bytes[20], static_cast<std::uint16_t>(extra_.size() * lasDescriptorSize));
    putText(bytes, 22, "Extra bytes");
    for (std::size_t i = 0; i < extra_.size(); ++i) {
        std::size_t const at = lasRecordHeaderSize + i * lasDescriptorSize;
        storeLittleEndian(&bytes[at + 2], extraType(extra_[i].type));
        putText(bytes, at + 4, extra_[i].field.name);
    }
    return bytes;
}

} // namespace oV::Roamscan::tool
