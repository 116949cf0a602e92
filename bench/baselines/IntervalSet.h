#pragma once

#include <roamscan/geometry/TimeWindow.h>

#include <boost/icl/interval_set.hpp>

#include <vector>

namespace bench
{

/// Anchor sections in Boost's interval set, which fuses what overlaps or touches just so. Windows must be
/// valid.
class IntervalSet
{
public:
    using TimeWindow = oV::Roamscan::TimeWindow;

    void insertSection(TimeWindow window) { set_.insert(Interval(window.start, window.end)); }

    [[nodiscard]] bool isAnchor(int64 time) const { return boost::icl::contains(set_, time); }

    [[nodiscard]] std::vector<TimeWindow> sections() const
    {
        std::vector<TimeWindow> sections;
        for (auto const& interval : set_) {
            sections.emplace_back(interval.lower(), interval.upper());
        }
        return sections;
    }

private:
    using Interval = boost::icl::right_open_interval<int64>;

    boost::icl::interval_set<int64, std::less, Interval> set_;
};

} // namespace bench
