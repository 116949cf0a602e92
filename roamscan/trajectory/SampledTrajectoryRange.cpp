#include <roamscan/frame/platform/detail/Rounding.h>
#include <roamscan/trajectory/SampledTrajectoryRange.h>

#include <cmath>

namespace oV::Roamscan
{

SampledTrajectoryRange::SampledTrajectoryRange(Trajectory const* trajectory,
                                               TimeStamp start,
                                               TimeStamp stop,
                                               Duration step)
    : trajectory_(trajectory),
      start_(start),
      step_(step),
      count_(static_cast<std::uint64_t>(oV::detail::roundToInteger((stop - start).get() / step.get())) + 1)
{}

SampledTrajectoryIterator SampledTrajectoryRange::begin() const
{
    return SampledTrajectoryIterator(trajectory_, start_, 0, step_);
}

SampledTrajectoryIterator SampledTrajectoryRange::end() const
{
    return SampledTrajectoryIterator(trajectory_, start_, count_, step_);
}

} // namespace oV::Roamscan
