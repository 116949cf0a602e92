#include "tests/support/TimeWindows.h"

#include <roamscan/geometry/AnchorSections.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using oV::Roamscan::AnchorSections;
using oV::Roamscan::TimeWindow;
using support::unset;
using support::windowsOf;
using testing::ElementsAre;
using testing::IsEmpty;

AnchorSections inserted(std::initializer_list<TimeWindow> windows)
{
    AnchorSections sections;
    for (TimeWindow const window : windows) {
        sections.insertSection(window);
    }
    return sections;
}

std::vector<TimeWindow> windowsAfter(std::initializer_list<TimeWindow> windows)
{
    return windowsOf(inserted(windows));
}

// The set

TEST(AnchorSections, StartsEmpty)
{
    AnchorSections const sections;
    EXPECT_EQ(sections.size(), 0U);
    EXPECT_TRUE(sections.begin() == sections.end());
}

TEST(AnchorSections, AnEmptySetAnswersFalseOrEnd)
{
    AnchorSections const sections;
    EXPECT_FALSE(sections.isAnchor(0));
    EXPECT_TRUE(sections.getAnchorSection(0) == sections.end());
    EXPECT_FALSE(sections.isInAnchorSection({0, 1}));
    EXPECT_FALSE(sections.containsAnyAnchorMarker({0, 1}));
    EXPECT_FALSE(sections.containsStartXorEndMarkerOfOneSequence({0, 1}));
}

TEST(AnchorSections, IteratesOverConstWindows)
{
    using Element = decltype(*std::declval<AnchorSections&>().begin());
    static_assert(std::is_same_v<Element, TimeWindow const&>);
    static_assert(std::is_same_v<AnchorSections::const_iterator, std::vector<TimeWindow>::const_iterator>);
}

TEST(AnchorSections, CopiesAreIndependent)
{
    AnchorSections source = inserted({{10, 20}});
    AnchorSections const constructed(source);
    AnchorSections assigned = inserted({{1, 2}});
    assigned = source;
    source.insertSection({30, 40});
    EXPECT_THAT(windowsOf(constructed), ElementsAre(TimeWindow(10, 20)));
    EXPECT_THAT(windowsOf(assigned), ElementsAre(TimeWindow(10, 20)));
}

TEST(AnchorSections, MovesTakeTheSectionsAlong)
{
    AnchorSections source = inserted({{10, 20}});
    AnchorSections constructed(std::move(source));
    EXPECT_THAT(windowsOf(constructed), ElementsAre(TimeWindow(10, 20)));
    AnchorSections assigned = inserted({{1, 2}});
    assigned = std::move(constructed);
    EXPECT_THAT(windowsOf(assigned), ElementsAre(TimeWindow(10, 20)));
}

// Inserting valid windows

TEST(AnchorSections, KeepsApartWindowsInAscendingOrderWhateverTheOrderOfInsertion)
{
    EXPECT_THAT(windowsAfter({{50, 60}, {-10, -5}, {30, 40}}),
                ElementsAre(TimeWindow(-10, -5), TimeWindow(30, 40), TimeWindow(50, 60)));
}

TEST(AnchorSections, InsertingAWindowTwiceLeavesOneSection)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {10, 20}}), ElementsAre(TimeWindow(10, 20)));
}

TEST(AnchorSections, AWindowThatOverlapsTwoSectionsFusesThem)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {30, 40}, {15, 35}}), ElementsAre(TimeWindow(10, 40)));
}

TEST(AnchorSections, ALargerWindowSwallowsASectionAndASmallerOneVanishesInIt)
{
    AnchorSections sections = inserted({{10, 20}, {5, 25}});
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(5, 25)));
    sections.insertSection({12, 18});
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(5, 25)));
}

TEST(AnchorSections, SwallowsSectionsThatShareItsStartOrItsEnd)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {10, 30}}), ElementsAre(TimeWindow(10, 30)));
    EXPECT_THAT(windowsAfter({{10, 20}, {5, 20}}), ElementsAre(TimeWindow(5, 20)));
    EXPECT_THAT(windowsAfter({{10, 20}, {30, 40}, {10, 40}}), ElementsAre(TimeWindow(10, 40)));
}

TEST(AnchorSections, AWindowThatEndsWhereASectionDoesVanishesInIt)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {15, 20}}), ElementsAre(TimeWindow(10, 20)));
}

TEST(AnchorSections, OverlappingWindowsFuseAtEitherSide)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {15, 25}}), ElementsAre(TimeWindow(10, 25)));
    EXPECT_THAT(windowsAfter({{10, 20}, {5, 15}}), ElementsAre(TimeWindow(5, 20)));
}

TEST(AnchorSections, TouchingWindowsFuseInEitherOrderOfInsertion)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {20, 30}}), ElementsAre(TimeWindow(10, 30)));
    EXPECT_THAT(windowsAfter({{10, 20}, {0, 10}}), ElementsAre(TimeWindow(0, 20)));
    EXPECT_THAT(windowsAfter({{1, 2}, {2, 3}}), ElementsAre(TimeWindow(1, 3)));
    EXPECT_THAT(windowsAfter({{2, 3}, {1, 2}}), ElementsAre(TimeWindow(1, 3)));
}

TEST(AnchorSections, AWindowThatFillsAGapFusesBothNeighbours)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {30, 40}, {20, 30}}), ElementsAre(TimeWindow(10, 40)));
}

TEST(AnchorSections, AGapOfOneTickKeepsTwoSections)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {21, 30}}), ElementsAre(TimeWindow(10, 20), TimeWindow(21, 30)));
    EXPECT_THAT(windowsAfter({{10, 20}, {0, 9}}), ElementsAre(TimeWindow(0, 9), TimeWindow(10, 20)));
}

// Inserting what is not valid: nothing is checked, the steps are the same

TEST(AnchorSections, StoresADefaultWindow)
{
    EXPECT_THAT(windowsAfter({TimeWindow()}), ElementsAre(TimeWindow(unset, unset)));
    EXPECT_THAT(windowsAfter({{10, 20}, TimeWindow()}), ElementsAre(TimeWindow(10, 20), TimeWindow()));
}

TEST(AnchorSections, ADefaultWindowFusesWithADefaultSection)
{
    // Its start is the section's end, so it takes the section's place.
    EXPECT_THAT(windowsAfter({TimeWindow(), TimeWindow()}), ElementsAre(TimeWindow()));
}

TEST(AnchorSections, StoresAnEmptyWindowOutsideAllSections)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {25, 25}}), ElementsAre(TimeWindow(10, 20), TimeWindow(25, 25)));
    EXPECT_THAT(windowsAfter({{10, 20}, {5, 5}}), ElementsAre(TimeWindow(5, 5), TimeWindow(10, 20)));
}

TEST(AnchorSections, DropsAnEmptyWindowInsideASection)
{
    EXPECT_THAT(windowsAfter({{10, 20}, {15, 15}}), ElementsAre(TimeWindow(10, 20)));
    EXPECT_THAT(windowsAfter({{10, 20}, {10, 10}}), ElementsAre(TimeWindow(10, 20)));
}

TEST(AnchorSections, AnEmptyWindowAtTheEndOfASectionLeavesItsStartOnly)
{
    // It starts where the section ends, so its start becomes the section's start. Its end is in no section
    // and does not change.
    EXPECT_THAT(windowsAfter({{10, 20}, {20, 20}}), ElementsAre(TimeWindow(10, 20)));
}

TEST(AnchorSections, StoresAReversedWindowEvenTwice)
{
    EXPECT_THAT(windowsAfter({{20, 5}}), ElementsAre(TimeWindow(20, 5)));
    EXPECT_THAT(windowsAfter({{20, 5}, {20, 5}}), ElementsAre(TimeWindow(20, 5), TimeWindow(20, 5)));
}

TEST(AnchorSections, AReversedWindowTakesTheSectionsAtItsEnds)
{
    EXPECT_THAT(windowsAfter({{0, 10}, {18, 30}, {20, 5}}), ElementsAre(TimeWindow(18, 10)));
}

TEST(AnchorSections, AReversedWindowThatStartsAtASectionsEndCutsTheSection)
{
    // The start is the section's end and is tested first; the end inside the section is not looked at.
    EXPECT_THAT(windowsAfter({{2, 5}, {5, 3}}), ElementsAre(TimeWindow(2, 3)));
}

TEST(AnchorSections, AWindowFusesWithALaterReversedSectionThatEndsWhereItStarts)
{
    EXPECT_THAT(windowsAfter({{20, 5}, {5, 10}}), ElementsAre(TimeWindow(20, 10)));
}

TEST(AnchorSections, AWindowSwallowsAReversedSectionWithinIt)
{
    EXPECT_THAT(windowsAfter({{20, 5}, {5, 30}}), ElementsAre(TimeWindow(5, 30)));
}

TEST(AnchorSections, AWindowWithoutASetEndHoldsAllLaterTimes)
{
    AnchorSections const sections = inserted({{10, unset}});
    EXPECT_TRUE(sections.isAnchor(unset - 1));
    EXPECT_FALSE(sections.isAnchor(unset));
    EXPECT_THAT(windowsAfter({{10, unset}, {20, 30}}), ElementsAre(TimeWindow(10, unset)));
    EXPECT_THAT(windowsAfter({{20, 30}, {10, unset}}), ElementsAre(TimeWindow(10, unset)));
}

// Whole sets

TEST(AnchorSections, IncludesEachSectionOfAnotherSet)
{
    AnchorSections sections = inserted({{10, 20}, {50, 60}});
    AnchorSections const others = inserted({{15, 30}, {70, 80}});
    sections.includeAnchorSections(others);
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(10, 30), TimeWindow(50, 60), TimeWindow(70, 80)));
    EXPECT_THAT(windowsOf(others), ElementsAre(TimeWindow(15, 30), TimeWindow(70, 80)));
}

TEST(AnchorSections, IncludesInTheOrderOfTheOtherSet)
{
    // (4, 6) is dropped inside (0, 10), which (10, 3) then shortens. In the reverse order, (4, 6) would
    // remain.
    AnchorSections const others = inserted({{4, 6}, {10, 3}});
    ASSERT_THAT(windowsOf(others), ElementsAre(TimeWindow(4, 6), TimeWindow(10, 3)));
    AnchorSections sections = inserted({{0, 10}});
    sections.includeAnchorSections(others);
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(0, 3)));
    EXPECT_THAT(windowsAfter({{0, 10}, {10, 3}, {4, 6}}), ElementsAre(TimeWindow(0, 3), TimeWindow(4, 6)));
}

TEST(AnchorSections, PlusAssignIncludesAndGivesTheSetBack)
{
    AnchorSections sections = inserted({{10, 20}});
    AnchorSections& result = sections += inserted({{20, 30}});
    EXPECT_EQ(&result, &sections);
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(10, 30)));
}

TEST(AnchorSections, IncludingAnEmptySetChangesNothing)
{
    AnchorSections sections = inserted({{10, 20}});
    sections += AnchorSections();
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(10, 20)));
    AnchorSections none;
    none += AnchorSections();
    EXPECT_THAT(windowsOf(none), IsEmpty());
}

TEST(AnchorSections, IncludingItselfChangesNothingInValidSections)
{
    AnchorSections sections = inserted({{10, 20}, {30, 40}, {50, 60}});
    AnchorSections const& same = sections;
    sections += same;
    EXPECT_THAT(windowsOf(sections), ElementsAre(TimeWindow(10, 20), TimeWindow(30, 40), TimeWindow(50, 60)));
}

TEST(AnchorSections, IncludingItselfInsertsTheSectionsAsTheyWereBefore)
{
    // Each reversed section is stored once more, and so the set grows while it is being inserted: what comes
    // next moves, and moves on to other memory where the room for one more is used up.
    AnchorSections sections = inserted({{20, 5}, {40, 30}, {60, 50}});
    AnchorSections const& same = sections;
    sections.includeAnchorSections(same);
    EXPECT_THAT(windowsOf(sections),
                ElementsAre(TimeWindow(20, 5),
                            TimeWindow(20, 5),
                            TimeWindow(40, 30),
                            TimeWindow(40, 30),
                            TimeWindow(60, 50),
                            TimeWindow(60, 50)));
}

// Lookups

TEST(AnchorSections, IsAnchorAtTheStartOfASectionAndNotAtItsEnd)
{
    AnchorSections const sections = inserted({{10, 20}});
    EXPECT_FALSE(sections.isAnchor(9));
    EXPECT_TRUE(sections.isAnchor(10));
    EXPECT_TRUE(sections.isAnchor(19));
    EXPECT_FALSE(sections.isAnchor(20));
}

TEST(AnchorSections, GetAnchorSectionPointsAtTheSectionOfTheTime)
{
    AnchorSections const sections = inserted({{10, 20}, {30, 40}, {50, 60}});
    EXPECT_TRUE(sections.getAnchorSection(35) == sections.begin() + 1);
    EXPECT_EQ(*sections.getAnchorSection(50), TimeWindow(50, 60));
    EXPECT_TRUE(sections.getAnchorSection(25) == sections.end());
    EXPECT_TRUE(sections.getAnchorSection(60) == sections.end());
    EXPECT_TRUE(sections.getAnchorSection(0) == sections.end());
}

TEST(AnchorSections, GetAnchorSectionLooksPastReversedAndEmptySections)
{
    AnchorSections const sections = inserted({{0, 100}, {120, 110}, {105, 105}});
    EXPECT_EQ(*sections.getAnchorSection(50), TimeWindow(0, 100));
    AnchorSections const within = inserted({{20, -5}, {30, -5}, {0, 100}});
    ASSERT_THAT(windowsOf(within), ElementsAre(TimeWindow(0, 100), TimeWindow(20, -5), TimeWindow(30, -5)));
    EXPECT_TRUE(within.getAnchorSection(50) == within.begin());
}

TEST(AnchorSections, AWindowThatEndsAtTheSectionsEndIsNotInIt)
{
    AnchorSections const sections = inserted({{10, 20}});
    EXPECT_FALSE(sections.isInAnchorSection({12, 20}));
    EXPECT_TRUE(sections.isInAnchorSection({12, 19}));
    EXPECT_TRUE(sections.isInAnchorSection({10, 19}));
    EXPECT_FALSE(sections.isInAnchorSection({9, 19}));
}

TEST(AnchorSections, AWindowFromOneSectionToAnotherIsInNone)
{
    EXPECT_FALSE(inserted({{10, 20}, {30, 40}}).isInAnchorSection({15, 35}));
}

TEST(AnchorSections, IsInAnchorSectionLooksAtBothEndsInAnyOrder)
{
    EXPECT_TRUE(inserted({{10, 20}}).isInAnchorSection({18, 12}));
}

TEST(AnchorSections, ContainsAnyAnchorMarkerAtAStartOrAnEnd)
{
    AnchorSections const sections = inserted({{10, 20}});
    EXPECT_TRUE(sections.containsAnyAnchorMarker({5, 11}));
    EXPECT_TRUE(sections.containsAnyAnchorMarker({20, 25}));
    EXPECT_TRUE(sections.containsAnyAnchorMarker({0, 30}));
    EXPECT_FALSE(sections.containsAnyAnchorMarker({11, 20}));
    EXPECT_FALSE(sections.containsAnyAnchorMarker({0, 10}));
    EXPECT_FALSE(sections.containsAnyAnchorMarker({21, 30}));
}

TEST(AnchorSections, AReversedWindowContainsNoMarker)
{
    EXPECT_FALSE(inserted({{10, 20}}).containsAnyAnchorMarker({30, 0}));
}

TEST(AnchorSections, ContainsAMarkerOfAReversedSection)
{
    AnchorSections const sections = inserted({{20, 5}});
    EXPECT_TRUE(sections.containsAnyAnchorMarker({5, 6}));
    EXPECT_TRUE(sections.containsAnyAnchorMarker({20, 21}));
    EXPECT_FALSE(sections.containsAnyAnchorMarker({6, 20}));
}

TEST(AnchorSections, StartXorEndIsTrueWhereOneOfThemLiesInASection)
{
    AnchorSections const sections = inserted({{10, 20}});
    EXPECT_TRUE(sections.containsStartXorEndMarkerOfOneSequence({15, 25}));
    EXPECT_TRUE(sections.containsStartXorEndMarkerOfOneSequence({5, 15}));
    EXPECT_TRUE(sections.containsStartXorEndMarkerOfOneSequence({12, 20}));
    EXPECT_FALSE(sections.containsStartXorEndMarkerOfOneSequence({12, 18}));
    EXPECT_FALSE(sections.containsStartXorEndMarkerOfOneSequence({0, 30}));
}

TEST(AnchorSections, StartXorEndIsTrueFromOneSectionToAnother)
{
    EXPECT_TRUE(inserted({{10, 20}, {30, 40}}).containsStartXorEndMarkerOfOneSequence({15, 35}));
}

} // namespace
