#include <roamscan/geometry/AnchorSections.h>

#include <algorithm>
#include <cstddef>

namespace oV::Roamscan
{

namespace
{

using Iterator = std::vector<TimeWindow>::iterator;
using ConstIterator = std::vector<TimeWindow>::const_iterator;

bool containsAnInstant(TimeWindow const& window)
{
    return window.start < window.end;
}

// The first section that starts after the time: std::upper_bound by start, but branchless. The comparison is
// unpredictable, so a branch would mispredict half the time. The end is tested first, because windows are
// mostly inserted in order.
template <typename Position>
Position firstStartingAfter(int64 time, Position begin, Position end)
{
    if (begin == end || (end - 1)->start <= time) {
        return end;
    }
    // The result is one of the `count` sections from `begin`.
    std::ptrdiff_t count = end - begin;
    while (count > 1) {
        std::ptrdiff_t const half = count / 2;
        begin += half * static_cast<std::ptrdiff_t>(begin[half - 1].start <= time);
        count -= half;
    }
    return begin;
}

// Whether the window contains the section, which may end where the window ends.
bool contains(TimeWindow const& window, TimeWindow const& section)
{
    return window.contains(section.start) && (window.contains(section.end) || section.end == window.end);
}

// Extends the window by a section that contains or touches the window's start or, if it does not, its end.
bool extendBy(TimeWindow& window, TimeWindow const& section)
{
    if (section.contains(window.start) || section.end == window.start) {
        window.start = section.start;
        return true;
    }
    if (section.contains(window.end) || section.start == window.end) {
        window.end = section.end;
        return true;
    }
    return false;
}

struct Range
{
    Iterator first;
    Iterator last;
};

// The sections that the window can contain, overlap or touch. By the invariant these are few, unless the
// window or a later section is reversed.
Range withinReach(TimeWindow const& window, Iterator begin, Iterator end)
{
    if (!containsAnInstant(window)) {
        return {begin, end};
    }
    // Of the sections that start at or before the window's start, only the last one with an instant can reach
    // it.
    Iterator first = firstStartingAfter(window.start, begin, end);
    while (first != begin) {
        --first;
        if (containsAnInstant(*first)) {
            break;
        }
    }
    Iterator last = first;
    while (last != end && last->start <= window.end) {
        ++last;
    }
    // A reversed section may end where the window starts.
    bool const anyReversed =
        std::any_of(last, end, [](TimeWindow const& section) { return section.end < section.start; });
    return {first, anyReversed ? end : last};
}

} // namespace

AnchorSections::const_iterator AnchorSections::begin() const
{
    return sections_.begin();
}

AnchorSections::const_iterator AnchorSections::end() const
{
    return sections_.end();
}

std::size_t AnchorSections::size() const
{
    return sections_.size();
}

void AnchorSections::insertSection(TimeWindow window)
{
    if (isInAnchorSection(window)) {
        return;
    }
    auto const [first, last] = withinReach(window, sections_.begin(), sections_.end());

    // In order, each section is merged with the window as extended so far.
    TimeWindow merged = window;
    Iterator kept = first;
    for (Iterator section = first; section != last; ++section) {
        if (!contains(window, *section) && !extendBy(merged, *section)) {
            *kept++ = *section;
        }
    }
    if (kept == last) {
        sections_.insert(firstStartingAfter(window.start, sections_.begin(), sections_.end()), window);
        return;
    }
    // Reuses the room of a removed section, so nothing is allocated.
    Iterator const place = firstStartingAfter(merged.start, sections_.begin(), kept);
    std::move_backward(place, kept, kept + 1);
    *place = merged;
    sections_.erase(kept + 1, last);
}

void AnchorSections::includeAnchorSections(AnchorSections const& other)
{
    if (this == &other) {
        includeAnchorSections(AnchorSections(other));
        return;
    }
    for (TimeWindow const& section : other) {
        insertSection(section);
    }
}

AnchorSections& AnchorSections::operator+=(AnchorSections const& other)
{
    includeAnchorSections(other);
    return *this;
}

bool AnchorSections::isAnchor(int64 time) const
{
    return getAnchorSection(time) != end();
}

AnchorSections::const_iterator AnchorSections::getAnchorSection(int64 time) const
{
    // By the invariant only the last section with an instant that starts at or before the time can contain
    // it.
    ConstIterator section = firstStartingAfter(time, begin(), end());
    while (section != begin()) {
        --section;
        if (containsAnInstant(*section)) {
            return section->contains(time) ? section : end();
        }
    }
    return end();
}

bool AnchorSections::isInAnchorSection(TimeWindow window) const
{
    auto const section = getAnchorSection(window.start);
    return section != end() && section->contains(window.end);
}

bool AnchorSections::containsAnyAnchorMarker(TimeWindow window) const
{
    return std::any_of(begin(), end(), [&window](TimeWindow const& section) {
        return window.contains(section.start) || window.contains(section.end);
    });
}

bool AnchorSections::containsStartXorEndMarkerOfOneSequence(TimeWindow window) const
{
    // By the invariant at most one section contains each of the two.
    return getAnchorSection(window.start) != getAnchorSection(window.end);
}

} // namespace oV::Roamscan
