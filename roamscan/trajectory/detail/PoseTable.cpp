#include <roamscan/frame/platform/detail/Rounding.h>
#include <roamscan/trajectory/detail/PoseTable.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

namespace oV::Roamscan::detail
{

namespace
{

[[noreturn]] void throwOutOfRange(char const* message)
{
    throw std::out_of_range(message);
}

} // namespace

PoseTable::PoseTable(std::vector<double> times, std::vector<TrafoT<double>> poses)
    : times_(std::move(times)), poses_(std::move(poses))
{
    assert(times_.size() == poses_.size());
    if (times_.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("Too many poses for one trajectory");
    }
    if (times_.size() > 1) {
        lastCell_ = static_cast<double>(times_.size() - 1);
        cellsPerSecond_ = lastCell_ / (times_.back() - times_.front());
        if (!keysLieNearTheirCells()) {
            makeGuide();
        }
    }
}

TrafoT<double> PoseTable::operator()(double seconds) const
{
    switch (reachOf(seconds)) {
    case Reach::Between: {
        // A time at a key is interpolated with fraction 0, so the result is valid() even if the stored pose
        // is not. Kept for compatibility.
        std::size_t const upper = firstKeyAfter(seconds);
        std::size_t const lower = upper - 1;
        double const fraction = (seconds - times_[lower]) / (times_[upper] - times_[lower]);
        return poses_[lower].interpolate(poses_[upper], fraction);
    }
    case Reach::AtLast:
        return poses_.back(); // unchanged, including its flag
    case Reach::Empty:
        throwOutOfRange("Cannot query transformation from an empty trajectory");
    case Reach::BeforeFirst:
        throwOutOfRange("Time point before the trajectory begin");
    case Reach::PastLast:
        break;
    }
    throwOutOfRange("Time point past the trajectory end");
}

PoseTable::Reach PoseTable::reachOf(double seconds) const
{
    if (times_.empty()) {
        return Reach::Empty;
    }
    if (!(seconds >= times_.front())) {
        return Reach::BeforeFirst;
    }
    if (seconds < times_.back()) {
        return Reach::Between;
    }
    // Only this end has a tolerance, so that a rounded time still finds the last pose. Kept for
    // compatibility.
    return oV::detail::roundHalfAway((seconds - times_.back()) * 100000.0) == 0.0 ? Reach::AtLast
                                                                                  : Reach::PastLast;
}

// Monotonic in the time, also with rounding: of two times in different cells, the one in the lower cell is
// earlier. NaN, which infinite keys may give, maps to the first cell.
std::size_t PoseTable::cellOf(double seconds) const
{
    double const position = (seconds - times_.front()) * cellsPerSecond_;
    if (!(position > 0.0)) {
        return 0;
    }
    return static_cast<std::size_t>(std::min(position, lastCell_));
}

std::size_t PoseTable::firstKeyAfter(double seconds) const
{
    std::size_t const cell = cellOf(seconds);
    if (guide_.empty()) {
        std::size_t upper = std::min(cell + 1, times_.size() - 1);
        while (times_[upper] <= seconds) {
            ++upper;
        }
        while (times_[upper - 1] > seconds) {
            --upper;
        }
        return upper;
    }
    std::size_t const first = guide_[cell];
    std::size_t const last = guide_[cell + 1];
    constexpr std::size_t fewKeys = 4;
    if (last - first <= fewKeys && times_.size() >= fewKeys) {
        // Counts in a window of fixed length, because a loop up to the key would mispredict its end. The
        // window covers the cell; keys of lower cells are earlier than the time, keys of higher cells later.
        std::size_t const start = std::min(first, times_.size() - fewKeys);
        std::size_t upper = start;
        for (std::size_t i = 0; i < fewKeys; ++i) {
            upper += static_cast<std::size_t>(times_[start + i] <= seconds);
        }
        return upper;
    }
    auto const begin = times_.begin();
    auto const found = std::upper_bound(
        begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last), seconds);
    return static_cast<std::size_t>(found - times_.begin());
}

bool PoseTable::keysLieNearTheirCells() const
{
    for (std::size_t i = 0; i < times_.size(); ++i) {
        std::size_t const cell = cellOf(times_[i]);
        if (cell > i + 1 || cell + 1 < i) {
            return false;
        }
    }
    return true;
}

void PoseTable::makeGuide()
{
    std::size_t const cells = times_.size();
    guide_.reserve(cells + 1);
    for (std::size_t i = 0; i < times_.size(); ++i) {
        guide_.resize(std::max(guide_.size(), cellOf(times_[i]) + 1), static_cast<std::uint32_t>(i));
    }
    guide_.resize(cells + 1, static_cast<std::uint32_t>(times_.size()));
}

} // namespace oV::Roamscan::detail
