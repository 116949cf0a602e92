#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/detail/PoseTable.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan::detail
{

/// Poses with their times as they are written, one after the other; what builders collect in before it
/// becomes a table. Later writes of a time replace earlier ones.
///
/// Writing is an append. Times that go back are put in order by one sort when the table is made, or earlier
/// when as many writes again have come as there were different times, so that writing the same few times over
/// and over does not grow without bound.
class PoseSequence
{
public:
    /// Makes room for `count` poses, and puts off sorting until there are more.
    void reserve(std::size_t count);

    /// Writes a pose. A NaN time has no place in the order, and no query could meet it, so its pose is not
    /// kept.
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
