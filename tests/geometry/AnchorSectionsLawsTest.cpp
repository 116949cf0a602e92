/// @file
/// Properties of anchor sections after any sequence of insertions, compared with the union of ticks and with
/// a naive reference.

#include "tests/support/LiteralAnchorSections.h"
#include "tests/support/TimeWindows.h"

#include <roamscan/geometry/AnchorSections.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

using oV::Roamscan::AnchorSections;
using oV::Roamscan::TimeWindow;
using support::LiteralAnchorSections;
using support::lowest;
using support::unset;
using support::windowsOf;

using Windows = std::vector<TimeWindow>;

bool startIsLess(TimeWindow const& a, TimeWindow const& b)
{
    return a.start < b.start;
}

// Sections with the same start may have either order.
Windows inOneOrder(Windows windows)
{
    std::sort(windows.begin(), windows.end(), [](TimeWindow const& a, TimeWindow const& b) {
        return std::tie(a.start, a.end) < std::tie(b.start, b.end);
    });
    return windows;
}

// Every window from one of these times to another, in either direction and empty ones too.
Windows allWindowsOf(std::vector<int64> const& times)
{
    Windows windows;
    for (int64 const start : times) {
        for (int64 const end : times) {
            windows.emplace_back(start, end);
        }
    }
    return windows;
}

std::vector<int64> ticksUpTo(int64 last)
{
    std::vector<int64> ticks(static_cast<std::size_t>(last + 1));
    std::iota(ticks.begin(), ticks.end(), int64{0});
    return ticks;
}

Windows validWindowsUpTo(int64 last)
{
    Windows windows = allWindowsOf(ticksUpTo(last));
    std::erase_if(windows, [](TimeWindow const& window) { return !window.valid(); });
    return windows;
}

// Calls `check(before, window, after)` for each insertion of each sequence of windows of this length.
void insertEverySequence(Windows const& windows, int length, AnchorSections const& before, auto const& check)
{
    if (length == 0 || testing::Test::HasFatalFailure()) {
        return;
    }
    for (TimeWindow const& window : windows) {
        AnchorSections after = before;
        after.insertSection(window);
        check(before, window, after);
        insertEverySequence(windows, length - 1, after, check);
    }
}

// The law of valid windows, on an axis of up to 64 ticks

using Ticks = std::uint64_t; // bit i: the tick from i to i + 1

Ticks ticksIn(TimeWindow const& window)
{
    return ((Ticks{1} << window.end) - 1) & ~((Ticks{1} << window.start) - 1);
}

Ticks ticksIn(AnchorSections const& sections)
{
    return std::accumulate(sections.begin(),
                           sections.end(),
                           Ticks{0},
                           [](Ticks sum, TimeWindow const& section) { return sum | ticksIn(section); });
}

// The longest runs of ticks: sorted, disjoint, and touching ones fused.
Windows runsOf(Ticks ticks)
{
    Windows runs;
    for (int time = 0; ticks >> time != 0;) {
        time += std::countr_zero(ticks >> time);
        int const length = std::countr_one(ticks >> time);
        runs.emplace_back(time, time + length);
        time += length;
    }
    return runs;
}

void expectUnion(AnchorSections const& before, TimeWindow const& window, AnchorSections const& after)
{
    if (windowsOf(after) != runsOf(ticksIn(before) | ticksIn(window))) {
        FAIL() << testing::PrintToString(before) << " and " << testing::PrintToString(window) << " became "
               << testing::PrintToString(after);
    }
}

TEST(AnchorSectionsLaws, RunsOfTicksAreSortedDisjointAndApart)
{
    EXPECT_EQ(runsOf(0b0), Windows());
    EXPECT_EQ(runsOf(0b0110'1110), (Windows{{1, 4}, {5, 7}}));
    EXPECT_EQ(runsOf(ticksIn(TimeWindow(2, 5))), (Windows{{2, 5}}));
}

TEST(AnchorSectionsLaws, EveryThreeValidWindowsInEveryOrderGiveTheUnionAtEachStep)
{
    Windows const windows = validWindowsUpTo(9);
    ASSERT_EQ(windows.size(), 45U);
    insertEverySequence(windows, 3, {}, expectUnion);
}

TEST(AnchorSectionsLaws, RandomValidWindowsGiveTheUnionAtEachStep)
{
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937_64 generator(seed);
        int64 const longest = std::uniform_int_distribution<int64>(1, 10)(generator);
        AnchorSections sections;
        for (int i = 0; i < 40 && !HasFatalFailure(); ++i) {
            int64 const start = std::uniform_int_distribution<int64>(0, 62 - longest)(generator);
            TimeWindow const window(start,
                                    start + std::uniform_int_distribution<int64>(1, longest)(generator));
            AnchorSections const before = sections;
            sections.insertSection(window);
            expectUnion(before, window, sections);
        }
    }
}

// The law of any windows: the literal steps

void expectLiteralSteps(AnchorSections const& before, TimeWindow const& window, AnchorSections const& after)
{
    LiteralAnchorSections expected(windowsOf(before));
    expected.insertSection(window);
    Windows const actual = windowsOf(after);
    if (actual == expected.sections()) {
        return;
    }
    if (!std::is_sorted(actual.begin(), actual.end(), startIsLess) ||
        inOneOrder(actual) != inOneOrder(expected.sections()))
    {
        FAIL() << testing::PrintToString(before) << " and " << testing::PrintToString(window) << " became "
               << testing::PrintToString(after) << " instead of "
               << testing::PrintToString(expected.sections());
    }
}

void expectLiteralAnswers(AnchorSections const& sections, TimeWindow const& query)
{
    LiteralAnchorSections const expected(windowsOf(sections));
    auto const place = [](auto const& iterator, auto const& begin) { return iterator - begin; };
    bool const isSame = sections.isAnchor(query.start) == expected.isAnchor(query.start) &&
                        place(sections.getAnchorSection(query.start), sections.begin()) ==
                            place(expected.getAnchorSection(query.start), expected.sections().begin()) &&
                        sections.isInAnchorSection(query) == expected.isInAnchorSection(query) &&
                        sections.containsAnyAnchorMarker(query) == expected.containsAnyAnchorMarker(query) &&
                        sections.containsStartXorEndMarkerOfOneSequence(query) ==
                            expected.containsStartXorEndMarkerOfOneSequence(query);
    if (!isSame) {
        FAIL() << testing::PrintToString(sections) << " answers otherwise on "
               << testing::PrintToString(query);
    }
}

TEST(AnchorSectionsLaws, EveryThreeWindowsEmptyAndReversedOnesTooFollowTheStepsInEveryOrder)
{
    insertEverySequence(allWindowsOf(ticksUpTo(7)), 3, {}, expectLiteralSteps);
}

TEST(AnchorSectionsLaws, EveryThreeWindowsUnsetOnesTooFollowTheStepsInEveryOrder)
{
    insertEverySequence(allWindowsOf({0, 1, 2, 3, unset}), 3, {}, expectLiteralSteps);
}

// Calls `check(sections)` once for each set of at most `most` sections that insertions of these windows lead
// to by way of such sets, however many they are.
void reachEverySet(Windows const& windows, std::size_t most, auto const& check)
{
    auto const isLess = [](Windows const& a, Windows const& b) {
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(), [](TimeWindow const& left, TimeWindow const& right) {
                return std::tie(left.start, left.end) < std::tie(right.start, right.end);
            });
    };
    std::set<Windows, decltype(isLess)> reached(isLess);
    std::vector<AnchorSections> pending = {{}};
    while (!pending.empty() && !testing::Test::HasFatalFailure()) {
        AnchorSections const sections = pending.back();
        pending.pop_back();
        check(sections);
        for (TimeWindow const& window : windows) {
            AnchorSections next = sections;
            next.insertSection(window);
            if (next.size() <= most && reached.insert(windowsOf(next)).second) {
                pending.push_back(std::move(next));
            }
        }
    }
}

TEST(AnchorSectionsLaws, EverySetOnAShortAxisFollowsTheStepsAndAnswersAsLinearScans)
{
    Windows const windows = allWindowsOf({lowest, 0, 1, 2, unset});
    reachEverySet(windows, 4, [&windows](AnchorSections const& before) {
        for (TimeWindow const& window : windows) {
            AnchorSections after = before;
            after.insertSection(window);
            expectLiteralSteps(before, window, after);
            expectLiteralAnswers(before, window);
        }
    });
}

TEST(AnchorSectionsLaws, SectionsThatHoldAnInstantAreDisjointAndApartWhateverIsInserted)
{
    reachEverySet(allWindowsOf(ticksUpTo(4)), 4, [](AnchorSections const& sections) {
        Windows holding = windowsOf(sections);
        std::erase_if(holding, [](TimeWindow const& section) { return section.start >= section.end; });
        for (std::size_t i = 1; i < holding.size(); ++i) {
            if (holding[i].start <= holding[i - 1].end) {
                FAIL() << testing::PrintToString(sections);
            }
        }
    });
}

// Times that often meet, now and then at the ends of the numbers.
int64 randomTime(std::mt19937_64& generator, int64 last)
{
    if (std::uniform_int_distribution<int>(0, 40)(generator) == 0) {
        constexpr int64 extremes[] = {lowest, lowest + 1, unset - 1, unset};
        return extremes[std::uniform_int_distribution<std::size_t>(0, 3)(generator)];
    }
    return std::uniform_int_distribution<int64>(-last, last)(generator);
}

TEST(AnchorSectionsLaws, RandomWindowsFollowTheStepsAndAnswerAsLinearScans)
{
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937_64 generator(seed);
        int64 const last = std::uniform_int_distribution<int64>(3, 150)(generator);
        // From none of them reversed to every other one.
        std::bernoulli_distribution isReversed(static_cast<double>(seed % 6) / 10.0);
        AnchorSections sections;
        for (int i = 0; i < 60 && !HasFatalFailure(); ++i) {
            int64 const start = randomTime(generator, last);
            int64 const end = i % 3 == 0 ? randomTime(generator, last)
                                         : std::min(start, unset - 4) + static_cast<int64>(generator() % 4);
            TimeWindow const window = isReversed(generator) ? TimeWindow(end, start) : TimeWindow(start, end);
            AnchorSections const before = sections;
            sections.insertSection(window);
            expectLiteralSteps(before, window, sections);
            expectLiteralAnswers(sections,
                                 TimeWindow(randomTime(generator, last), randomTime(generator, last)));
        }
    }
}

} // namespace
