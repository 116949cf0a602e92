#pragma once

#include <roamscan/geometry/TimeWindow.h>

#include <boost/icl/interval_set.hpp>

namespace bench
{

/// Anchor sections in Boost's interval set, which joins intervals that overlap or touch. Windows must be
/// valid.
class IntervalSet
{
public:
    void insertSection(oV::Roamscan::TimeWindow window) { set_.insert(Interval(window.start, window.end)); }

    [[nodiscard]] bool isAnchor(int64 time) const { return boost::icl::contains(set_, time); }

private:
    using Interval = boost::icl::right_open_interval<int64>;

    boost::icl::interval_set<int64, std::less, Interval> set_;
};

} // namespace bench
