#pragma once

#include <roamscan/time/TrafoT.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace oV::Roamscan::detail
{

/// The pose function of a trajectory that was built from poses: an ordered map from time to pose in
/// contiguous storage.
///
/// A lookup takes constant time on average (interpolation search). The axis from the first to the last key is
/// divided into as many equal cells as there are intervals between keys. If the keys are evenly spaced, key i
/// lies in cell i or next to it, so the cell of a time gives its neighbours. Otherwise a guide table holds
/// the first key of each cell, and only the keys of one cell are searched by bisection.
class PoseTable
{
public:
    /// @param times  seconds, strictly ascending, without NaN
    /// @param poses  as many poses
    PoseTable(std::vector<double> times, std::vector<TrafoT<double>> poses);

    /// The pose at a time in seconds. Interpolated between two keys; from the last key up to 5 us past it,
    /// the last pose unchanged.
    /// @throws std::out_of_range before the first key, more than 5 us past the last one, or without keys
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
