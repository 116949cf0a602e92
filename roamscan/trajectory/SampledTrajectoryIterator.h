#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TimeStamp.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace oV::Roamscan
{

class Trajectory;

/// An input iterator over the poses of a trajectory at a fixed step. It holds the node of its position; each
/// increment evaluates the pose function once.
///
/// Refers to the trajectory, which must outlive it. Exceptions of the pose function pass through the
/// constructor and the increments.
///
/// Thread safety: an iterator belongs to one thread. Several iterators may use one trajectory concurrently.
///
/// @warning At a time outside the trajectory's interval the node is not updated: it stays that of the
/// previous position, time included. At the first position it is then a default node (time 0, identity).
class ROAMSCAN_EXPORT SampledTrajectoryIterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = TrajectoryNode;
    using difference_type = std::ptrdiff_t;
    using pointer = TrajectoryNode const*;
    using reference = TrajectoryNode const&;

    /// An iterator without a trajectory. It may only be assigned to, compared and destroyed.
    SampledTrajectoryIterator() = default;

    /// The position at time `start + index * step`, in seconds. Evaluates the pose function if the trajectory
    /// contains that time.
    SampledTrajectoryIterator(Trajectory const* trajectory,
                              TimeStamp start,
                              std::uint64_t index,
                              Duration step);

    [[nodiscard]] TrajectoryNode const& operator*() const { return node_; }
    [[nodiscard]] TrajectoryNode const* operator->() const { return &node_; }

    SampledTrajectoryIterator& operator++();
    SampledTrajectoryIterator operator++(int);

    /// Compares the indices only, not the trajectories, starts and steps. Meant for the end test of a loop.
    [[nodiscard]] friend bool operator==(SampledTrajectoryIterator const& a,
                                         SampledTrajectoryIterator const& b)
    {
        return a.index_ == b.index_;
    }
    [[nodiscard]] friend bool operator!=(SampledTrajectoryIterator const& a,
                                         SampledTrajectoryIterator const& b)
    {
        return a.index_ != b.index_;
    }

private:
    void updateTrafo();

    Trajectory const* trajectory_ = nullptr;
    TimeStamp start_;
    std::uint64_t index_ = 0;
    Duration step_;
    TrajectoryNode node_;
};

} // namespace oV::Roamscan
