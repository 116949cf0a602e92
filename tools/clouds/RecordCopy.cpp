#include "tools/clouds/RecordCopy.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"

#include <algorithm>
#include <bit>
#include <concepts>
#include <ostream>
#include <type_traits>

namespace oV::Roamscan::tool
{

namespace
{

template <std::integral Integer>
double exactDouble(Integer value, Field const& field, std::filesystem::path const& name)
{
    auto const converted = static_cast<double>(value);
    // 2^63 or 2^64, from which the conversion back would overflow
    constexpr double limit = std::is_signed_v<Integer> ? 9223372036854775808.0 : 18446744073709551616.0;
    if (!(converted < limit) || static_cast<Integer>(converted) != value) {
        throw fileError(name,
                        "PLY has no 64-bit integers, and a double cannot hold the " + plain(field.name) +
                            ' ' + std::to_string(value) + "; write PCD, CSV or LAS");
    }
    return converted;
}

void copyField(PointBlock const& points,
               PointLayout const& layout,
               PointLayout const& written,
               std::size_t index,
               std::vector<char>& buffer,
               std::filesystem::path const& name)
{
    Field const& from = layout.fields()[index];
    Field const& to = written.fields()[index];
    withType(from.type, [&](auto zero) {
        using Number = decltype(zero);
        char const* source = points.records.data() + from.offset;
        char* target = buffer.data() + to.offset;
        for (std::size_t i = 0; i < points.count; ++i, source += layout.stride(), target += written.stride())
        {
            auto const value = load<Number>(source);
            if constexpr (std::integral<Number> && sizeof(Number) == 8) {
                if (to.type == FieldType::Double) {
                    store(target, exactDouble(value, from, name));
                } else {
                    store(target, value);
                }
            } else {
                store(target, value);
            }
            if constexpr (std::endian::native != std::endian::little) {
                std::reverse(target, target + sizeOf(to.type));
            }
        }
    });
}

bool sameTypes(PointLayout const& a, PointLayout const& b)
{
    return std::ranges::equal(a.fields(), b.fields(), {}, &Field::type, &Field::type);
}

} // namespace

std::span<char const> littleEndianRecords(PointBlock const& points,
                                          PointLayout const& layout,
                                          PointLayout const& written,
                                          std::vector<char>& buffer,
                                          std::filesystem::path const& name)
{
    if (std::endian::native == std::endian::little && sameTypes(layout, written)) {
        return points.records;
    }
    if (points.count == 0) {
        return {};
    }
    buffer.resize(points.count * written.stride());
    for (std::size_t i = 0; i < layout.fields().size(); ++i) {
        copyField(points, layout, written, i, buffer, name);
    }
    return buffer;
}

void writeBytes(std::ostream& stream, std::span<char const> bytes, std::filesystem::path const& name)
{
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream) {
        throw fileError(name, "cannot be written any further; is the disk full?");
    }
}

std::string oneWord(std::string_view name)
{
    std::string word(name);
    std::ranges::replace_if(
        word, [](char c) { return c <= ' ' || c > '~'; }, '_');
    return word.empty() ? "_" : word;
}

} // namespace oV::Roamscan::tool
