#pragma once

#include <roamscan/geometry/AnchorSections.h>
#include <roamscan/geometry/TimeWindow.h>

#include <limits>
#include <ostream>
#include <vector>

namespace oV::Roamscan
{

/// How a failing test shows a window; found by its namespace.
// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest looks for it by this name
inline void PrintTo(TimeWindow const& window, std::ostream* stream)
{
    auto const print = [stream](int64 time) {
        if (time == TimeWindow::unsetTime) {
            *stream << "unset";
        } else {
            *stream << time;
        }
    };
    *stream << '(';
    print(window.start);
    *stream << ", ";
    print(window.end);
    *stream << ')';
}

} // namespace oV::Roamscan

namespace support
{

inline std::vector<oV::Roamscan::TimeWindow> windowsOf(oV::Roamscan::AnchorSections const& sections)
{
    return {sections.begin(), sections.end()};
}

} // namespace support

namespace support
{

constexpr int64 unset = oV::Roamscan::TimeWindow::unsetTime;
constexpr int64 lowest = std::numeric_limits<int64>::min();

} // namespace support
