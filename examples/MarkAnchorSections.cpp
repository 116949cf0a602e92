/// @file
/// Marks the anchor sections of a recording and queries them.

#include <roamscan/geometry/AnchorSections.h>
#include <roamscan/time/TimeConversion.h>

#include <cstdio>

using oV::Roamscan::AnchorSections;
using oV::Roamscan::TimeWindow;
using oV::Roamscan::TimeConversion::convertToIntegerTime;
using oV::Roamscan::TimeConversion::convertToSeconds;

namespace
{

TimeWindow window(double fromSeconds, double toSeconds)
{
    return {convertToIntegerTime(fromSeconds), convertToIntegerTime(toSeconds)};
}

} // namespace

int main()
{
    AnchorSections sections;
    sections.insertSection(window(60.0, 65.0));
    sections.insertSection(window(0.0, 10.0));
    sections.insertSection(window(8.0, 15.0));  // overlaps the previous section
    sections.insertSection(window(15.0, 20.0)); // adjoins it
    for (TimeWindow const& section : sections) {
        std::printf(
            "from %.1f s to %.1f s\n", convertToSeconds(section.start), convertToSeconds(section.end));
    }

    bool const isAnchored = sections.isAnchor(convertToIntegerTime(12.5));
    bool const isWithin = sections.isInAnchorSection(window(18.0, 61.0));
    std::printf("12.5 s is %s; 18 s to 61 s is %s one section\n",
                isAnchored ? "in an anchor section" : "free",
                isWithin ? "within" : "not within");
    return sections.size() == 2 && isAnchored && !isWithin ? 0 : 1;
}
