#pragma once

#include "tools/points/FieldType.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

/// One number of a point's record.
struct Field
{
    std::string name;
    FieldType type = FieldType::Double;
    std::size_t offset = 0; ///< Bytes from the start of the record.
};

/// The numbers that each point of a cloud has: their names and types, and where they are in the record of a
/// point. Every reader describes its points by a layout, and every writer writes points of any layout.
class PointLayout
{
public:
    PointLayout() = default;
    PointLayout(std::initializer_list<std::pair<char const*, FieldType>> fields);

    /// Appends a field to the record.
    void add(std::string name, FieldType type);

    [[nodiscard]] std::vector<Field> const& fields() const { return fields_; }

    /// Bytes of a record.
    [[nodiscard]] std::size_t stride() const { return stride_; }

    /// The field with this name, as sameName() compares names; null if there is none.
    [[nodiscard]] Field const* find(std::string_view name) const;

    /// The fields x, y and z, or others with the names of three components; nothing if one is missing.
    [[nodiscard]] std::optional<std::array<Field, 3>>
    findVector(std::string_view x, std::string_view y, std::string_view z) const;

private:
    std::vector<Field> fields_;
    std::size_t stride_ = 0;
};

/// Compares names without regard to case, underscores and blanks: "GpsTime" is "gps_time".
[[nodiscard]] bool sameName(std::string_view a, std::string_view b);

/// "x (double), time (float)", for messages.
[[nodiscard]] std::string listFields(PointLayout const& layout);

/// "uchar", "double" and so on, as in PLY files.
[[nodiscard]] char const* nameOf(FieldType type);

} // namespace oV::Roamscan::tool
