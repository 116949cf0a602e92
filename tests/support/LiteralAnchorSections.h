#pragma once

#include <roamscan/geometry/TimeWindow.h>

#include <algorithm>
#include <vector>

namespace support
{

/// The naive reference of anchor sections: every step of an insertion and every query is a linear scan of all
/// sections, without assumptions about their order. AnchorSections must give the same results.
///
/// The sections are written (a, b), the window (S, E).
class LiteralAnchorSections
{
public:
    using TimeWindow = oV::Roamscan::TimeWindow;
    using const_iterator = std::vector<TimeWindow>::const_iterator;

    LiteralAnchorSections() = default;
    explicit LiteralAnchorSections(std::vector<TimeWindow> sections) : sections_(std::move(sections)) {}

    [[nodiscard]] std::vector<TimeWindow> const& sections() const { return sections_; }

    void insertSection(TimeWindow window)
    {
        if (isInAnchorSection(window)) {
            return;
        }
        auto const swallowed = [S = window.start, E = window.end](TimeWindow const& section) {
            auto const [a, b] = section;
            return S <= a && a < E && ((S <= b && b < E) || b == E);
        };
        sections_.erase(std::remove_if(sections_.begin(), sections_.end(), swallowed), sections_.end());

        auto [S, E] = window;
        std::vector<TimeWindow> kept;
        for (auto const [a, b] : sections_) {
            if ((a <= S && S < b) || S == b) {
                S = a;
            } else if ((a <= E && E < b) || E == a) {
                E = b;
            } else {
                kept.emplace_back(a, b);
            }
        }
        kept.emplace_back(S, E);
        std::stable_sort(kept.begin(), kept.end(), [](TimeWindow const& left, TimeWindow const& right) {
            return left.start < right.start;
        });
        sections_ = std::move(kept);
    }

    [[nodiscard]] const_iterator getAnchorSection(int64 time) const
    {
        return std::find_if(sections_.begin(), sections_.end(), [time](TimeWindow const& section) {
            return holds(section, time);
        });
    }

    [[nodiscard]] bool isAnchor(int64 time) const { return getAnchorSection(time) != sections_.end(); }

    [[nodiscard]] bool isInAnchorSection(TimeWindow window) const
    {
        return anyOf([&window](TimeWindow const& section) {
            return holds(section, window.start) && holds(section, window.end);
        });
    }

    [[nodiscard]] bool containsAnyAnchorMarker(TimeWindow window) const
    {
        return anyOf([&window](TimeWindow const& section) {
            return holds(window, section.start) || holds(window, section.end);
        });
    }

    [[nodiscard]] bool containsStartXorEndMarkerOfOneSequence(TimeWindow window) const
    {
        return anyOf([&window](TimeWindow const& section) {
            return holds(section, window.start) != holds(section, window.end);
        });
    }

private:
    [[nodiscard]] static bool holds(TimeWindow const& window, int64 time)
    {
        return window.start <= time && time < window.end;
    }

    [[nodiscard]] bool anyOf(auto const& isSo) const
    {
        return std::any_of(sections_.begin(), sections_.end(), isSo);
    }

    std::vector<TimeWindow> sections_;
};

} // namespace support
