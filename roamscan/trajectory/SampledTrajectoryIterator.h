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

/// A position in a walk along a trajectory at a fixed step. It holds the node of its position; going on to
/// the next one evaluates the pose function once.
///
/// Callers may rely on the ends: a position whose time lies outside the trajectory's interval keeps the node
/// of the position before it, time included, and the first position shows a default node (time 0, identity)
/// then. Nothing is clamped.
///
/// Borrows the trajectory, which must outlive it. One thread uses an iterator at a time; several may walk one
/// trajectory at once. What the pose function throws passes through the constructor and the increments.
class ROAMSCAN_EXPORT SampledTrajectoryIterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = TrajectoryNode;
    using difference_type = std::ptrdiff_t;
    using pointer = TrajectoryNode const*;
    using reference = TrajectoryNode const&;

    /// An iterator over nothing; it may only be assigned to, compared and destroyed.
    SampledTrajectoryIterator() = default;

    /// The position at time `index * step + start`. Evaluates the pose function if that lies in the
    /// trajectory.
    SampledTrajectoryIterator(Trajectory const* trajectory,
                              TimeStamp start,
                              std::uint64_t index,
                              Duration step);

    [[nodiscard]] TrajectoryNode const& operator*() const { return node_; }
    [[nodiscard]] TrajectoryNode const* operator->() const { return &node_; }

    SampledTrajectoryIterator& operator++();
    SampledTrajectoryIterator operator++(int);

    /// Compares the indices alone, whatever the trajectories, starts and steps: it serves the end test of a
    /// loop.
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
