#include <roamscan/geometry/AnchorSections.h>

#include <algorithm>
#include <cstddef>

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

// The first section that starts after the time. Windows most often come in order, so the end is tried first.
// After that either half of what is left is as likely, and a branch would be foreseen wrongly every other
// time: the outcome is multiplied instead, which leaves the compiler none.
template <typename Position>
Position firstStartingAfter(int64 time, Position begin, Position end)
{
    if (begin == end || (end - 1)->start <= time) {
        return end;
    }
    // Among `count` sections from `begin` there is one to be found: the last of them, if no other.
    std::ptrdiff_t count = end - begin;
    while (count > 1) {
        std::ptrdiff_t const half = count / 2;
        begin += half * static_cast<std::ptrdiff_t>(begin[half - 1].start <= time);
        count -= half;
    }
    return begin;
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
    // Sections that hold an instant never touch each other, and no empty one touches them. So only the last
    // of those that start no later than the window can reach it.
    Iterator first = firstStartingAfter(window.start, begin, end);
    while (first != begin) {
        --first;
        if (holdsAnInstant(*first)) {
            break;
        }
    }
    // For the same reason no section that makes the window longer brings another one into its reach.
    Iterator last = first;
    while (last != end && last->start <= window.end) {
        ++last;
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
    auto const [first, last] = withinReach(window, sections_.begin(), sections_.end());

    // The sections fuse in their order, each with the window as those before have left it.
    TimeWindow fused = window;
    Iterator kept = first;
    for (Iterator section = first; section != last; ++section) {
        if (!isSwallowedBy(window, *section) && !fuses(fused, *section)) {
            *kept++ = *section;
        }
    }
    if (kept == last) {
        sections_.insert(firstStartingAfter(window.start, sections_.begin(), sections_.end()), window);
        return;
    }
    // One of those that it replaces leaves it the room. Those out of its reach start later.
    Iterator const place = firstStartingAfter(fused.start, sections_.begin(), kept);
    std::move_backward(place, kept, kept + 1);
    *place = fused;
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
    // Sections that hold an instant are disjoint: only the last of those that have started can hold this one.
    ConstIterator section = firstStartingAfter(time, begin(), end());
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
