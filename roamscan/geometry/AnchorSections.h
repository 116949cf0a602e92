#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>
#include <roamscan/geometry/TimeWindow.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan
{

/// The anchor sections of a recording: windows of integer time (ticks of 10 ns) in ascending order of their
/// starts.
///
/// Windows that are inserted fuse with the sections that they overlap or touch, so valid sections are
/// disjoint and never touch. Nothing checks TimeWindow::valid(): an empty, reversed or unset window goes
/// through the same steps and may stay as a section, which a caller that wants valid ones only tests first.
///
/// Nothing but memory running out makes an insertion throw, and no question throws. Many threads may read it;
/// writing needs the caller's own exclusion.
class ROAMSCAN_EXPORT AnchorSections
{
public:
    /// Over the sections, in ascending order of their starts.
    using const_iterator = std::vector<TimeWindow>::const_iterator;

    [[nodiscard]] const_iterator begin() const;
    [[nodiscard]] const_iterator end() const;

    /// The number of sections.
    [[nodiscard]] std::size_t size() const;

    /// Adds a window. One that lies inside a section, its end before the section's, changes nothing.
    /// Otherwise it takes the place of all sections that lie within it, or that it overlaps or touches,
    /// grown by those. Invalidates all iterators. If memory runs out, the sections are as they were.
    void insertSection(TimeWindow window);

    /// Inserts each section of `other`, in its order. `other` may be this object. If memory runs out, some of
    /// them may be in it.
    void includeAnchorSections(AnchorSections const& other);

    /// includeAnchorSections().
    AnchorSections& operator+=(AnchorSections const& other);

    /// Whether some section contains the time.
    [[nodiscard]] bool isAnchor(int64 time) const;

    /// The first section that contains the time, or end().
    [[nodiscard]] const_iterator getAnchorSection(int64 time) const;

    /// Whether some section contains both the window's start and its end. A section does not contain its own
    /// end, so a window that ends where the section does is not in it.
    [[nodiscard]] bool isInAnchorSection(TimeWindow window) const;

    /// Whether the window contains the start or the end of some section.
    [[nodiscard]] bool containsAnyAnchorMarker(TimeWindow window) const;

    /// Whether some section contains exactly one of the window's start and end.
    [[nodiscard]] bool containsStartXorEndMarkerOfOneSequence(TimeWindow window) const;

private:
    std::vector<TimeWindow> sections_;
};

} // namespace oV::Roamscan
