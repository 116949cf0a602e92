#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>
#include <roamscan/geometry/TimeWindow.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan
{

/// The anchor sections of a recording, in which the scanner stood still: an ordered set of disjoint windows
/// of integer time (ticks of 10 ns). An inserted window is merged with the sections that it overlaps or
/// touches.
///
/// An insertion may throw std::bad_alloc; nothing else throws.
///
/// Thread safety: concurrent reads are safe; a write needs exclusive access.
///
/// @note TimeWindow::valid() is not tested. An empty, reversed or unset window is inserted by the same rules
///     and may remain as a section. To have only valid sections, test a window before inserting it.
class ROAMSCAN_EXPORT AnchorSections
{
public:
    /// Iterates over the sections in ascending order of their starts.
    using const_iterator = std::vector<TimeWindow>::const_iterator;

    [[nodiscard]] const_iterator begin() const;
    [[nodiscard]] const_iterator end() const;

    /// The number of sections.
    [[nodiscard]] std::size_t size() const;

    /// Inserts the union of the window and all sections that it contains, overlaps or touches, in place of
    /// these sections. Does nothing if the window lies inside a section.
    ///
    /// Invalidates all iterators.
    /// @throws std::bad_alloc the sections are then unchanged
    void insertSection(TimeWindow window);

    /// Inserts each section of `other`, in order. `other` may be this object.
    /// @throws std::bad_alloc some of the sections may then have been inserted
    void includeAnchorSections(AnchorSections const& other);

    /// The same as includeAnchorSections().
    AnchorSections& operator+=(AnchorSections const& other);

    /// Whether some section contains the time.
    [[nodiscard]] bool isAnchor(int64 time) const;

    /// @return the section that contains the time, or end(); found by binary search
    [[nodiscard]] const_iterator getAnchorSection(int64 time) const;

    /// Whether one section contains both the window's start and its end.
    /// @note A section does not contain its own end, so this is false for a window that ends where the
    /// section ends.
    [[nodiscard]] bool isInAnchorSection(TimeWindow window) const;

    /// Whether the window contains the start or the end of some section.
    [[nodiscard]] bool containsAnyAnchorMarker(TimeWindow window) const;

    /// Whether some section contains either the window's start or its end, but not both.
    [[nodiscard]] bool containsStartXorEndMarkerOfOneSequence(TimeWindow window) const;

private:
    // Invariant: sorted by start; the sections that contain an instant (start < end) are disjoint and do not
    // touch each other. Empty and reversed sections may lie between them; an empty one touches no other
    // section, a reversed one may end anywhere before its start.
    std::vector<TimeWindow> sections_;
};

} // namespace oV::Roamscan
