#include <roamscan/trajectory/detail/PoseSequence.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace oV::Roamscan::detail
{

namespace
{

struct Write
{
    double time;
    std::size_t index; // in the order of writing
};

std::vector<Write> writesInOrder(std::vector<double> const& times)
{
    std::vector<Write> writes;
    writes.reserve(times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
        writes.push_back({times[i], i});
    }
    std::sort(writes.begin(), writes.end(), [](Write const& a, Write const& b) {
        return a.time < b.time || (a.time == b.time && a.index < b.index);
    });
    return writes;
}

} // namespace

void PoseSequence::reserve(std::size_t count)
{
    times_.reserve(count);
    poses_.reserve(count);
    sortAbove_ = std::max(sortAbove_, count);
}

void PoseSequence::write(double time, TrafoT<double> const& pose)
{
    if (std::isnan(time)) {
        lastWritten_ = nowhere;
        return;
    }
    if (!times_.empty() && time == times_.back()) {
        poses_.back() = pose;
        lastWritten_ = times_.size() - 1;
        return;
    }
    makeRoomForOne();
    ascending_ = ascending_ && (times_.empty() || time > times_.back());
    times_.push_back(time);
    poses_.push_back(pose);
    lastWritten_ = times_.size() - 1;
}

TrafoT<double> const* PoseSequence::lastWritten() const
{
    return lastWritten_ == nowhere ? nullptr : &poses_[lastWritten_];
}

PoseTable PoseSequence::toTable() const&
{
    return PoseSequence(*this).toTable();
}

PoseTable PoseSequence::toTable() &&
{
    putInOrder();
    return PoseTable(std::move(times_), std::move(poses_));
}

// Afterwards both appends of one write cannot fail, so no write is ever half done.
void PoseSequence::makeRoomForOne()
{
    if (!ascending_ && times_.size() >= sortAbove_) {
        putInOrder();
        sortAbove_ = std::max(sortAbove_, 2 * times_.size());
    }
    if (times_.size() == std::min(times_.capacity(), poses_.capacity())) {
        std::size_t const enough = std::max<std::size_t>(16, 2 * times_.size());
        times_.reserve(enough);
        poses_.reserve(enough);
    }
}

void PoseSequence::putInOrder()
{
    if (ascending_) {
        return;
    }
    std::vector<Write> const writes = writesInOrder(times_);
    std::vector<double> times;
    std::vector<TrafoT<double>> poses;
    times.reserve(writes.size());
    poses.reserve(writes.size());
    std::size_t lastWritten = nowhere;
    for (auto const& [time, index] : writes) {
        // Of the writes of one time, the first one's key stands (0.0 and -0.0 are one time) with the last
        // one's pose.
        if (!times.empty() && time == times.back()) {
            poses.back() = poses_[index];
        } else {
            times.push_back(time);
            poses.push_back(poses_[index]);
        }
        if (index == lastWritten_) {
            lastWritten = times.size() - 1;
        }
    }
    times_ = std::move(times);
    poses_ = std::move(poses);
    lastWritten_ = lastWritten;
    ascending_ = true;
}

} // namespace oV::Roamscan::detail
