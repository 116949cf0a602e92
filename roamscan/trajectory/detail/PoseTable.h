#pragma once

#include <roamscan/time/TrafoT.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace oV::Roamscan::detail
{

/// Poses by time, and the pose function over them: what stands behind a trajectory that was built from poses.
/// It answers as an ordered map from time to pose would, from contiguous storage.
///
/// Finding the two neighbours of a time costs a constant number of steps on average. The axis from the first
/// to the last key is cut into as many equal cells as there are gaps between keys. Where the keys are evenly
/// spaced, each lies in the cell of its own number or next to it, and the cell of a time gives its neighbours
/// away. Elsewhere a guide says for each cell where its keys begin, and only the keys of one cell are
/// searched.
class PoseTable
{
public:
    /// @param times  seconds, strictly ascending, without NaN
    /// @param poses  as many poses
    PoseTable(std::vector<double> times, std::vector<TrafoT<double>> poses);

    /// The pose at a time in seconds: between two keys interpolated, at the last key and up to 5 us past it
    /// the last pose as it is.
    /// @throws std::out_of_range before the first key, later than that past the last one, or if there is no
    /// key
    [[nodiscard]] TrafoT<double> operator()(double seconds) const;

    /// Where a time lies among the keys.
    enum class Reach
    {
        Empty,       ///< There is no key.
        BeforeFirst, ///< Also a NaN time.
        Between,     ///< At or after the first key and before the last one.
        AtLast,      ///< At the last key, or up to 5 us past it.
        PastLast
    };
    [[nodiscard]] Reach reachOf(double seconds) const;

    /// The index of the first key after a time that lies between the keys (Reach::Between); at least 1.
    [[nodiscard]] std::size_t firstKeyAfter(double seconds) const;

    [[nodiscard]] std::vector<double> const& times() const { return times_; }
    [[nodiscard]] std::vector<TrafoT<double>> const& poses() const { return poses_; }

private:
    [[nodiscard]] std::size_t cellOf(double seconds) const;
    [[nodiscard]] bool keysLieNearTheirCells() const;
    void makeGuide();

    std::vector<double> times_;
    std::vector<TrafoT<double>> poses_;
    double cellsPerSecond_ = 0.0;
    double lastCell_ = 0.0;
    std::vector<std::uint32_t>
        guide_; // index of the first key in or after each cell; empty for evenly spaced keys
};

} // namespace oV::Roamscan::detail
