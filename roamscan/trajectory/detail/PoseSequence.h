#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/detail/PoseTable.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan::detail
{

/// Collects poses with times, in any order, for a PoseTable. A later write of a time replaces an earlier one.
///
/// A write is an append. Times that are not ascending are sorted once when the table is made. They are also
/// sorted whenever the number of writes has doubled since the last sort, so that repeated writes of the same
/// times do not use unbounded memory.
class PoseSequence
{
public:
    /// Reserves memory for `count` poses and does not sort before there are more.
    void reserve(std::size_t count);

    /// Writes a pose. Ignores a time of NaN, which has no place in the order.
    void write(double time, TrafoT<double> const& pose);

    /// The pose of the last write, or null if there is none or if its time was NaN.
    [[nodiscard]] TrafoT<double> const* lastWritten() const;

    [[nodiscard]] PoseTable toTable() const&;
    [[nodiscard]] PoseTable toTable() &&;

private:
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    void makeRoomForOne();
    void putInOrder();

    std::vector<double> times_;
    std::vector<TrafoT<double>> poses_;
    bool ascending_ = true;
    std::size_t lastWritten_ = nowhere;
    std::size_t sortAbove_ = 4096;
};

} // namespace oV::Roamscan::detail
