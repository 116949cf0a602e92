#include "tools/points/PointLayout.h"

#include "tools/console/Text.h"

#include <algorithm>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

std::string simplified(std::string_view name)
{
    std::string simple;
    for (char const c : name) {
        if (c != '_' && c != ' ') {
            simple += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return simple;
}

} // namespace

PointLayout::PointLayout(std::initializer_list<std::pair<char const*, FieldType>> fields)
{
    for (auto const& [name, type] : fields) {
        add(name, type);
    }
}

void PointLayout::add(std::string name, FieldType type)
{
    fields_.push_back({std::move(name), type, stride_});
    stride_ += sizeOf(type);
}

Field const* PointLayout::find(std::string_view name) const
{
    auto const found =
        std::ranges::find_if(fields_, [&](Field const& field) { return sameName(field.name, name); });
    return found == fields_.end() ? nullptr : &*found;
}

std::optional<std::array<Field, 3>>
PointLayout::findVector(std::string_view x, std::string_view y, std::string_view z) const
{
    Field const* const first = find(x);
    Field const* const second = find(y);
    Field const* const third = find(z);
    if (first == nullptr || second == nullptr || third == nullptr) {
        return std::nullopt;
    }
    return std::array{*first, *second, *third};
}

bool sameName(std::string_view a, std::string_view b)
{
    return a == b || simplified(a) == simplified(b);
}

std::string listFields(PointLayout const& layout)
{
    std::vector<std::string> names;
    for (Field const& field : layout.fields()) {
        names.push_back(plain(field.name) + " (" + nameOf(field.type) + ")");
    }
    return listed(names);
}

char const* nameOf(FieldType type)
{
    constexpr std::array names{
        "char", "uchar", "short", "ushort", "int", "uint", "long", "ulong", "float", "double"};
    return names[static_cast<std::size_t>(type)];
}

} // namespace oV::Roamscan::tool
