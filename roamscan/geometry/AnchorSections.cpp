#include <roamscan/geometry/AnchorSections.h>

#include <algorithm>

namespace oV::Roamscan
{

namespace
{

using Iterator = std::vector<TimeWindow>::iterator;
using ConstIterator = std::vector<TimeWindow>::const_iterator;

// Empty and reversed windows contain no instant.
bool holdsAnInstant(TimeWindow const& window)
{
    return window.start < window.end;
}

bool startsLater(int64 time, TimeWindow const& section)
{
    return time < section.start;
}

// Whether a section starts in the window, and ends in it or where it ends.
bool isSwallowedBy(TimeWindow const& window, TimeWindow const& section)
{
    return window.contains(section.start) && (window.contains(section.end) || section.end == window.end);
}

// Whether the section holds or touches an end of the window, which then reaches to the section's own end. The
// start is looked at first, and alone if it is so.
bool fuses(TimeWindow& window, TimeWindow const& section)
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

// A range of sections outside of which none is swallowed by the window or fuses with it. Sections that hold
// an instant are disjoint, so it is short, unless the window or one of the later sections is reversed.
Range withinReach(TimeWindow const& window, Iterator begin, Iterator end)
{
    if (!holdsAnInstant(window)) {
        return {begin, end};
    }
    // Of the sections that start before the window, only the last one that holds an instant can reach it.
    Iterator first = std::upper_bound(begin, end, window.start, startsLater);
    while (first != begin) {
        --first;
        if (first->start < window.start && holdsAnInstant(*first)) {
            break;
        }
    }
    Iterator last = first;
    for (int64 farthest = window.end; last != end && last->start <= farthest; ++last) {
        farthest = std::max(farthest, last->end);
    }
    // A reversed section ends before it starts, and so may end where the window starts.
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
    // Only this can fail, and changes nothing then.
    sections_.push_back(window);
    auto const [first, last] = withinReach(window, sections_.begin(), sections_.end() - 1);

    // The sections fuse in their order, each with the window as those before have left it.
    TimeWindow fused = window;
    Iterator kept = first;
    for (Iterator section = first; section != last; ++section) {
        if (!isSwallowedBy(window, *section) && !fuses(fused, *section)) {
            *kept++ = *section;
        }
    }
    sections_.erase(kept, last);
    auto const place = std::upper_bound(sections_.begin(), sections_.end() - 1, fused.start, startsLater);
    std::move_backward(place, sections_.end() - 1, sections_.end());
    *place = fused;
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
    // Sections that hold an instant are disjoint: only the last of those that have started can hold this one.
    ConstIterator section = std::upper_bound(begin(), end(), time, startsLater);
    while (section != begin()) {
        --section;
        if (holdsAnInstant(*section)) {
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
    // Disjoint as they are, at most one section holds each of the two.
    return getAnchorSection(window.start) != getAnchorSection(window.end);
}

} // namespace oV::Roamscan
