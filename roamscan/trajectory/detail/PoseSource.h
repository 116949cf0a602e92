#pragma once

#include <roamscan/time/detail/Interpolate.h>
#include <roamscan/time/detail/Slerp.h>
#include <roamscan/time/detail/TransformBetween.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/detail/PoseTable.h>

#include <Eigen/Core>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <stdexcept>

namespace oV::Roamscan::detail
{

/// The outcome of asking for a pose.
enum class PoseState
{
    Found,
    Outside,
    InGap ///< The time is between two poses that are farther apart than the longest gap.
};

/// The poses of a table. Caches the interval of the last time and the slerp of its two poses.
class TablePoses
{
public:
    /// Borrows the table.
    TablePoses(PoseTable const& table, double longestGap) : table_(table), longestGap_(longestGap) {}

    /// Goes to a time. Only if the result is Found, pose() and transform() may be called.
    [[nodiscard]] PoseState goTo(double seconds)
    {
        if (!(seconds >= lowerTime_ && seconds < upperTime_)) {
            PoseTable::Reach const reach = table_.reachOf(seconds);
            isAtLast_ = reach == PoseTable::Reach::AtLast;
            if (isAtLast_) {
                leave();
                return PoseState::Found;
            }
            if (reach != PoseTable::Reach::Between) {
                return PoseState::Outside;
            }
            enter(seconds);
        }
        if (isGap_ && seconds != lowerTime_) {
            return PoseState::InGap;
        }
        fraction_ = (seconds - lowerTime_) / (upperTime_ - lowerTime_);
        return PoseState::Found;
    }

    /// The pose at the time.
    [[nodiscard]] TrafoT<double> pose() const
    {
        return isAtLast_ ? table_.poses().back() : interpolate(*lower_, *upper_, slerp_, fraction_);
    }

    /// `pose() * point`
    [[nodiscard]] Eigen::Vector3d transform(Eigen::Vector3d const& point) const
    {
        return isAtLast_ ? table_.poses().back() * point
                         : TransformBetween<double>(*lower_,
                                                    *upper_)(fraction_, slerp_.weightsAt(fraction_), point);
    }

    /// Goes to the first of some times.
    /// @return how many of the times, from the first one on, transformMany() can take together; may be 0
    [[nodiscard]] std::size_t goToMany(std::span<double const> times)
    {
        if (goTo(times.front()) != PoseState::Found || isAtLast_ || isGap_) {
            return 0;
        }
        auto const isOutside = [this](double time) { return !(time >= lowerTime_ && time < upperTime_); };
        auto const candidates = times.first(std::min(times.size(), mostTogether));
        return static_cast<std::size_t>(std::ranges::find_if(candidates, isOutside) - candidates.begin());
    }

    /// `pose() * point` for each of the times that goToMany() found, with as many points and places.
    ///
    /// Takes all points through one step after the other, so that the compiler can use instructions for
    /// several points at once in all steps but the sines.
    template <typename Scalar>
    void transformMany(std::span<double const> times,
                       std::span<Bv_1_1::Vec3d<Scalar> const> points,
                       std::span<Bv_1_1::Vec3d<double>> places) const
    {
        std::array<double, mostTogether> fractions;
        double const lower = lowerTime_;
        double const length = upperTime_ - lowerTime_;
        for (std::size_t i = 0; i < times.size(); ++i) {
            fractions[i] = (times[i] - lower) / length;
        }
        std::array<double, mostTogether> firstWeights;
        std::array<double, mostTogether> secondWeights;
        for (std::size_t i = 0; i < times.size(); ++i) {
            auto const [first, second] = slerp_.weightsAt(fractions[i]);
            firstWeights[i] = first;
            secondWeights[i] = second;
        }
        TransformBetween<double> const transformBetween(*lower_, *upper_);
        for (std::size_t i = 0; i < times.size(); ++i) {
            Eigen::Vector3d const point(points[i].x, points[i].y, points[i].z);
            Eigen::Vector3d const place =
                transformBetween(fractions[i], {firstWeights[i], secondWeights[i]}, point);
            places[i] = {place.x(), place.y(), place.z()};
        }
    }

private:
    /// The next time enters an interval again.
    void leave()
    {
        lowerTime_ = std::numeric_limits<double>::infinity();
        upperTime_ = -std::numeric_limits<double>::infinity();
    }

    void enter(double seconds)
    {
        auto const& times = table_.times();
        // For ascending times it is usually the next interval.
        bool const isNext = upper_ != nullptr && upperIndex_ + 1 < times.size() &&
                            seconds >= times[upperIndex_] && seconds < times[upperIndex_ + 1];
        upperIndex_ = isNext ? upperIndex_ + 1 : table_.firstKeyAfter(seconds);
        lowerTime_ = times[upperIndex_ - 1];
        upperTime_ = times[upperIndex_];
        lower_ = &table_.poses()[upperIndex_ - 1];
        upper_ = &table_.poses()[upperIndex_];
        slerp_ = Slerp<double>(lower_->rotation(), upper_->rotation());
        isGap_ = upperTime_ - lowerTime_ > longestGap_;
    }

    static constexpr std::size_t mostTogether = 64; // the arrays stay in the first-level cache

    PoseTable const& table_;
    double longestGap_;
    double lowerTime_ = std::numeric_limits<double>::infinity(); // no interval yet
    double upperTime_ = -std::numeric_limits<double>::infinity();
    std::size_t upperIndex_ = 0;
    TrafoT<double> const* lower_ = nullptr;
    TrafoT<double> const* upper_ = nullptr;
    Slerp<double> slerp_{TrafoT<double>::Quaternion::Identity(), TrafoT<double>::Quaternion::Identity()};
    bool isGap_ = false;
    bool isAtLast_ = false; // at the last pose, in no interval
    double fraction_ = 0.0; // of the interval
};

/// The poses of any trajectory, from its pose function.
class CalledPoses
{
public:
    /// Borrows the trajectory.
    explicit CalledPoses(Trajectory const& trajectory) : trajectory_(trajectory) {}

    /// The same as TablePoses::goTo(). A trajectory without a table has no gaps.
    [[nodiscard]] PoseState goTo(double seconds)
    {
        try {
            pose_ = trajectory_.sample(seconds);
        } catch (std::out_of_range const&) {
            return PoseState::Outside;
        }
        return PoseState::Found;
    }

    [[nodiscard]] TrafoT<double> const& pose() const { return pose_; }
    [[nodiscard]] Eigen::Vector3d transform(Eigen::Vector3d const& point) const { return pose_ * point; }

private:
    Trajectory const& trajectory_;
    TrafoT<double> pose_;
};

} // namespace oV::Roamscan::detail

namespace oV::Roamscan
{

/// Gives access to the pose table of a trajectory, if it has one.
class PoseSource
{
public:
    /// Calls `work` with the poses of the trajectory: TablePoses or CalledPoses.
    template <typename Work>
    static auto with(Trajectory const& trajectory, double longestGap, Work const& work)
    {
        if (auto const* const table = trajectory.pose_.target<detail::PoseTable>()) {
            return work([table, longestGap] { return detail::TablePoses(*table, longestGap); });
        }
        return work([&trajectory] { return detail::CalledPoses(trajectory); });
    }
};

} // namespace oV::Roamscan
