#pragma once

#include "tools/points/PointLayout.h"

#include <cstddef>
#include <vector>

namespace oV::Roamscan::tool
{

/// Some points of a cloud in a row.
struct PointBlock
{
    std::size_t count = 0;
    std::vector<char> records; ///< One after the other, each by the layout, in the platform's byte order.

    /// Changes the number of points; the records are unspecified afterwards.
    void resize(std::size_t points, PointLayout const& layout)
    {
        count = points;
        records.resize(points * layout.stride());
    }

    /// Reads a field of every record as doubles: `target[i * step]` for record i.
    void read(Field const& field, std::size_t stride, double* target, std::size_t step = 1) const
    {
        if (count == 0) {
            return; // there may be no memory to point into
        }
        withType(field.type, [&](auto zero) {
            char const* from = records.data() + field.offset;
            for (std::size_t i = 0; i < count; ++i, from += stride) {
                target[i * step] = static_cast<double>(load<decltype(zero)>(from));
            }
        });
    }
};

} // namespace oV::Roamscan::tool
