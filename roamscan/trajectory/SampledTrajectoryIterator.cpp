#include <roamscan/trajectory/SampledTrajectoryIterator.h>
#include <roamscan/trajectory/Trajectory.h>

#include <cmath>

namespace oV::Roamscan
{

SampledTrajectoryIterator::SampledTrajectoryIterator(Trajectory const* trajectory,
                                                     TimeStamp start,
                                                     std::uint64_t index,
                                                     Duration step)
    : trajectory_(trajectory), start_(start), index_(index), step_(step)
{
    updateTrafo();
}

SampledTrajectoryIterator& SampledTrajectoryIterator::operator++()
{
    ++index_;
    updateTrafo();
    return *this;
}

SampledTrajectoryIterator SampledTrajectoryIterator::operator++(int)
{
    SampledTrajectoryIterator before = *this;
    ++*this;
    return before;
}

void SampledTrajectoryIterator::updateTrafo()
{
    double const time = static_cast<double>(index_) * step_.get() + start_.get();
    if (time < trajectory_->getStartTime().get() || time > trajectory_->getStopTime().get() ||
        std::isnan(time)) {
        return;
    }
    node_ = TrajectoryNode(time, trajectory_->sample(time));
}

} // namespace oV::Roamscan
