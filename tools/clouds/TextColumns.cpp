#include "tools/clouds/TextColumns.h"

#include "tools/io/NumberText.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

template <typename Number>
bool parse(std::string_view text, Number& number)
{
    auto const [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size();
}

template <typename Number>
bool holds(std::int64_t lowest, std::uint64_t highest)
{
    using Limits = std::numeric_limits<Number>;
    return lowest >= static_cast<std::int64_t>(Limits::min()) &&
           highest <= static_cast<std::uint64_t>(Limits::max());
}

FieldType smallestType(std::int64_t lowest, std::uint64_t highest)
{
    if (lowest >= 0) {
        return holds<std::uint8_t>(lowest, highest)    ? FieldType::UInt8
               : holds<std::uint16_t>(lowest, highest) ? FieldType::UInt16
               : holds<std::uint32_t>(lowest, highest) ? FieldType::UInt32
                                                       : FieldType::UInt64;
    }
    if (!holds<std::int64_t>(lowest, highest)) {
        return FieldType::Double;
    }
    return holds<std::int8_t>(lowest, highest)    ? FieldType::Int8
           : holds<std::int16_t>(lowest, highest) ? FieldType::Int16
           : holds<std::int32_t>(lowest, highest) ? FieldType::Int32
                                                  : FieldType::Int64;
}

} // namespace

void TextColumns::take(std::string_view line, Separator separator)
{
    std::string_view rest = separator == Separator::Blanks ? trimmed(line) : line;
    for (Column& column : columns_) {
        if (rest.data() == nullptr) {
            return;
        }
        std::string_view const text = takeColumn(rest, separator);
        if (column.isInteger) {
            take(text, column);
        }
    }
}

void TextColumns::take(std::string_view text, Column& column)
{
    std::uint64_t positive = 0;
    std::int64_t negative = 0;
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    if (!text.empty() && text.front() == '-') {
        column.isInteger = parse(text, negative) && negative != 0; // the double has a negative zero
        column.lowest = std::min(column.lowest, negative);
    } else {
        column.isInteger = parse(text, positive);
        column.highest = std::max(column.highest, positive);
    }
}

PointLayout TextColumns::layout(std::vector<std::string> const& real) const
{
    constexpr std::int64_t exact = std::int64_t{1} << 53U; // integers up to this are exact as doubles
    PointLayout layout;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        Column const& column = columns_[i];
        bool const isExact = column.lowest >= -exact && column.highest <= static_cast<std::uint64_t>(exact);
        bool const isReal =
            std::ranges::any_of(real, [&](auto const& name) { return sameName(name, names_[i]); });
        bool const isDouble = !column.isInteger || (isReal && isExact);
        layout.add(names_[i], isDouble ? FieldType::Double : smallestType(column.lowest, column.highest));
    }
    return layout;
}

} // namespace oV::Roamscan::tool
