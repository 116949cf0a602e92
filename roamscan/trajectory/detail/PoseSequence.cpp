#include <roamscan/frame/platform/detail/UntouchedMemory.h>
#include <roamscan/trajectory/detail/PoseSequence.h>

#include <algorithm>
#include <cmath>
#include <functional>
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

template <typename T>
void reserveInLargePages(std::vector<T>& values, std::size_t count)
{
    if (count > values.capacity()) {
        values.reserve(count);
        if (values.empty()) {
            preferLargePages(values.data(), count * sizeof(T));
        }
    }
}

bool isStrictlyDescending(std::vector<double> const& times)
{
    return std::adjacent_find(times.begin(), times.end(), std::less_equal<>()) == times.end();
}

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
    reserveInLargePages(times_, count);
    reserveInLargePages(poses_, count);
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

// Reserves both vectors first, so that neither append of a write can throw.
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
    if (isStrictlyDescending(times_)) {
        std::reverse(times_.begin(), times_.end());
        std::reverse(poses_.begin(), poses_.end());
        lastWritten_ = lastWritten_ == nowhere ? nowhere : times_.size() - 1 - lastWritten_;
        ascending_ = true;
        return;
    }
    std::vector<Write> const writes = writesInOrder(times_);
    std::vector<double> times;
    std::vector<TrafoT<double>> poses;
    reserveInLargePages(times, writes.size());
    reserveInLargePages(poses, writes.size());
    std::size_t lastWritten = nowhere;
    for (auto const& [time, index] : writes) {
        // Of several writes at one time, keeps the key of the first (0.0 and -0.0 are one time) and the pose
        // of the last.
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
