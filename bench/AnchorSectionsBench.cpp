/// @file
/// Inserting windows into anchor sections, and looking up times, against a plain implementation of the same
/// steps and against Boost's interval set.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "tests/support/LiteralAnchorSections.h"

#include <roamscan/geometry/AnchorSections.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "bench/baselines/IntervalSet.h"
#endif

#include <algorithm>
#include <random>
#include <span>
#include <stdexcept>
#include <type_traits>

namespace bench
{

namespace
{

using oV::Roamscan::AnchorSections;
using oV::Roamscan::TimeWindow;
using support::LiteralAnchorSections;

constexpr std::size_t windowCount = 10'000;
constexpr std::size_t lookupCount = 1'000'000;
constexpr std::size_t slowLookupCount = 10'000;

enum class Windows
{
    Apart,  // nine windows of ten remain separate sections
    Fusing, // twenty windows become one section, on average
    InOrder // as Apart, sorted by their starts
};

// The same windows and times in each run.
struct AnchorInput
{
    explicit AnchorInput(Windows kind)
    {
        constexpr int64 spacing = 1'000'000; // ticks from one start to the next, on average
        constexpr int64 lastTime = spacing * static_cast<int64>(windowCount);
        std::mt19937_64 generator(20);
        std::uniform_int_distribution<int64> time(0, lastTime);
        std::uniform_int_distribution<int64> length(1, kind == Windows::Fusing ? 6 * spacing : spacing / 10);
        for (std::size_t i = 0; i < windowCount; ++i) {
            int64 const start = time(generator);
            windows.emplace_back(start, start + length(generator));
        }
        if (kind == Windows::InOrder) {
            std::ranges::sort(windows, {}, &TimeWindow::start);
        }
        for (std::size_t i = 0; i < lookupCount; ++i) {
            times.push_back(time(generator));
        }
    }

    std::vector<TimeWindow> windows;
    std::vector<int64> times;
};

template <typename Sections>
Sections filled(std::vector<TimeWindow> const& windows)
{
    Sections sections;
    for (TimeWindow const& window : windows) {
        sections.insertSection(window);
    }
    return sections;
}

// Filled sections. Only types that give the same answers can be compared.
template <typename Sections>
struct Filled
{
    explicit Filled(Windows kind) : sections(filled<Sections>(inputFor<AnchorInput>(kind).windows))
    {
        auto const& input = inputFor<AnchorInput>(kind);
        auto const expected = filled<AnchorSections>(input.windows);
        for (std::size_t i = 0; i < lookupCount; i += lookupCount / slowLookupCount) {
            if (sections.isAnchor(input.times[i]) != expected.isAnchor(input.times[i])) {
                throw std::logic_error("anchor sections differ");
            }
        }
    }

    Sections sections;
};

struct Insertion
{
    static constexpr char const* name = "insertSection";

    template <typename Sections, Windows kind>
    static void measure(benchmark::State& state)
    {
        auto const& windows = inputFor<AnchorInput>(kind).windows;
        measureEach(state, std::span(&windows, 1), filled<Sections>);
        state.SetItemsProcessed(state.iterations() * std::ssize(windows));
    }
};

struct Lookup
{
    static constexpr char const* name = "isAnchor";

    template <typename Sections, Windows kind>
    static void measure(benchmark::State& state)
    {
        constexpr bool isSlow = std::is_same_v<Sections, LiteralAnchorSections>;
        auto const& sections = inputFor<Filled<Sections>>(kind).sections;
        std::span const times(inputFor<AnchorInput>(kind).times);
        measureEach(state, times.first(isSlow ? slowLookupCount : lookupCount), [&sections](int64 time) {
            return sections.isAnchor(time);
        });
    }
};

template <typename Operation, Windows kind>
Figure figure(std::string const& name)
{
    return {name,
            nanoseconds,
            {Operation::name, Operation::template measure<AnchorSections, kind>},
            {{"plain vector", Operation::template measure<LiteralAnchorSections, kind>},
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
             {"icl::interval_set", Operation::template measure<IntervalSet, kind>}
#endif
            }};
}

} // namespace

Group anchorSections()
{
    return {"Anchor sections",
            Cost::ProcessorTime,
            {figure<Insertion, Windows::Apart>("insertSection, 10,000 windows, mostly apart"),
             figure<Lookup, Windows::Apart>("isAnchor, random times, windows mostly apart"),
             figure<Insertion, Windows::Fusing>("insertSection, 10,000 windows, mostly fusing"),
             figure<Lookup, Windows::Fusing>("isAnchor, random times, windows mostly fusing"),
             figure<Insertion, Windows::InOrder>("insertSection, 10,000 windows, mostly apart, in order")}};
}

} // namespace bench
