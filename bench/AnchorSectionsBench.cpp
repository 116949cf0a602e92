/// @file
/// Anchor sections: inserting windows in no order, and asking for times. Beside the same steps written down
/// plainly, and, where it is built in, against Boost's interval set.

#include "Benchmarks.h"
#include "tests/support/LiteralAnchorSections.h"

#include <roamscan/geometry/AnchorSections.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "baselines/IntervalSet.h"
#endif

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench
{

namespace
{

using oV::Roamscan::AnchorSections;
using oV::Roamscan::TimeWindow;
using support::LiteralAnchorSections;

constexpr int repetitions = 7;
constexpr char const* group = "Anchor sections";

constexpr std::size_t windowCount = 10'000;
constexpr std::size_t lookupCount = 1'000'000;
constexpr std::size_t slowLookupCount = 10'000; // is enough of what takes so long

enum class Kind
{
    Apart,  // nine windows of ten stay sections of their own
    Fusing, // there is a section for every twenty windows
    InOrder // as those that are apart, by their starts
};

std::string nameOf(Kind kind)
{
    switch (kind) {
    case Kind::Apart:
        return "mostly apart";
    case Kind::Fusing:
        return "mostly fusing";
    case Kind::InOrder:
        return "mostly apart, in order";
    }
    throw std::invalid_argument("no kind of windows");
}

// The same windows and times in each run.
struct Inputs
{
    explicit Inputs(Kind kind)
    {
        constexpr int64 spacing = 1'000'000; // ticks from one start to the next, on average
        constexpr int64 lastTime = spacing * static_cast<int64>(windowCount);
        std::mt19937_64 generator(20);
        std::uniform_int_distribution<int64> time(0, lastTime);
        std::uniform_int_distribution<int64> length(1, kind == Kind::Fusing ? 6 * spacing : spacing / 10);
        for (std::size_t i = 0; i < windowCount; ++i) {
            int64 const start = time(generator);
            windows.emplace_back(start, start + length(generator));
        }
        if (kind == Kind::InOrder) {
            std::sort(windows.begin(), windows.end(), [](TimeWindow const& a, TimeWindow const& b) {
                return a.start < b.start;
            });
        }
        for (std::size_t i = 0; i < lookupCount; ++i) {
            times.push_back(time(generator));
        }
        for (TimeWindow const& window : windows) {
            ours.insertSection(window);
            literal.insertSection(window);
        }
        requireAgreement(literal);
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
        for (TimeWindow const& window : windows) {
            intervals.insertSection(window);
        }
        requireAgreement(intervals);
#endif
    }

    // Whoever gives another answer is not to be compared with.
    void requireAgreement(auto const& other) const
    {
        bool isSame = std::vector<TimeWindow>(ours.begin(), ours.end()) == other.sections();
        for (std::size_t i = 0; i < lookupCount; i += lookupCount / slowLookupCount) {
            isSame = isSame && ours.isAnchor(times[i]) == other.isAnchor(times[i]);
        }
        if (!isSame) {
            throw std::logic_error("anchor sections differ");
        }
    }

    std::vector<TimeWindow> windows;
    std::vector<int64> times;
    AnchorSections ours;
    LiteralAnchorSections literal;
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    IntervalSet intervals;
#endif
};

Inputs const& inputsOf(Kind kind)
{
    static std::unique_ptr<Inputs const> inputs[3];
    auto& wanted = inputs[static_cast<std::size_t>(kind)];
    if (!wanted) {
        wanted = std::make_unique<Inputs const>(kind);
    }
    return *wanted;
}

template <typename Sections>
Subject insertion(std::string label, std::string const& name, Kind kind)
{
    Workload const work{static_cast<double>(windowCount)};
    return timedLoop(std::move(label), name, work, [kind](benchmark::State& state) {
        auto const& inputs = inputsOf(kind);
        for ([[maybe_unused]] auto _ : state) {
            Sections sections;
            for (TimeWindow const& window : inputs.windows) {
                sections.insertSection(window);
            }
            benchmark::DoNotOptimize(&sections);
            benchmark::ClobberMemory();
        }
    });
}

template <typename Sections>
Subject
lookup(std::string label, std::string const& name, Kind kind, std::size_t count, Sections Inputs::*sections)
{
    Workload const work{static_cast<double>(count)};
    return timedLoop(std::move(label), name, work, [kind, count, sections](benchmark::State& state) {
        auto const& inputs = inputsOf(kind);
        for ([[maybe_unused]] auto _ : state) {
            for (std::size_t i = 0; i < count; ++i) {
                bool isAnchor = (inputs.*sections).isAnchor(inputs.times[i]);
                benchmark::DoNotOptimize(isAnchor);
            }
        }
    });
}

Comparison compareInsertion(Kind kind)
{
    std::string const name = "anchors/insert/" + std::to_string(static_cast<int>(kind));
    Comparison comparison{
        group,
        "insertSection, 10,000 windows, " + nameOf(kind),
        nanoseconds,
        repetitions,
        insertion<AnchorSections>("insertSection", name + "/sections", kind),
        {Baseline{insertion<LiteralAnchorSections>("plain vector", name + "/plain", kind)}}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    Baseline otherLibrary{insertion<IntervalSet>("icl::interval_set", name + "/icl", kind)};
    otherLibrary.isOtherLibrary = true;
    comparison.baselines.push_back(std::move(otherLibrary));
#endif
    return comparison;
}

Comparison compareLookup(Kind kind)
{
    std::string const name = "anchors/lookup/" + std::to_string(static_cast<int>(kind));
    Comparison comparison{
        group,
        "isAnchor, random times, windows " + nameOf(kind),
        nanoseconds,
        repetitions,
        lookup("isAnchor", name + "/sections", kind, lookupCount, &Inputs::ours),
        {Baseline{lookup("plain vector", name + "/plain", kind, slowLookupCount, &Inputs::literal)}}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    Baseline otherLibrary{lookup("icl::interval_set", name + "/icl", kind, lookupCount, &Inputs::intervals)};
    otherLibrary.isOtherLibrary = true;
    comparison.baselines.push_back(std::move(otherLibrary));
#endif
    return comparison;
}

} // namespace

std::vector<Comparison> anchorSectionsBenchmarks()
{
    std::vector<Comparison> comparisons;
    for (Kind const kind : {Kind::Apart, Kind::Fusing}) {
        comparisons.push_back(compareInsertion(kind));
        comparisons.push_back(compareLookup(kind));
    }
    comparisons.push_back(compareInsertion(Kind::InOrder));
    return comparisons;
}

} // namespace bench
