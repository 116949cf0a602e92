#include <roamscan/trajectory/TrajectoryNode.h>

namespace oV::Roamscan
{

TrajectoryNode::TrajectoryNode() : TrajectoryNode(0.0) {}

TrajectoryNode::TrajectoryNode(double const timeValue,
                               TrafoT<double> const& poseValue,
                               Type const& typeValue,
                               Eigen::Matrix<double, 3, 3> const& matrixAValue,
                               Eigen::Matrix<double, 3, 3> const& matrixBValue,
                               bool const flagValue)
    : pose(poseValue),
      time(timeValue),
      type(typeValue),
      matrixA(matrixAValue),
      matrixB(matrixBValue),
      flag(flagValue)
{}

TrajectoryNode::TrajectoryNode(TrajectoryNode const& other) = default;

// Copies, because no member owns anything that could be moved, and `other` stays unchanged.
TrajectoryNode::TrajectoryNode(TrajectoryNode&& other) noexcept
    // NOLINTNEXTLINE(performance-move-constructor-init): a copy on purpose
    : TrajectoryNode(static_cast<TrajectoryNode const&>(other))
{}

TrajectoryNode::~TrajectoryNode() = default;

TrajectoryNode& TrajectoryNode::operator=(TrajectoryNode const& other) = default;

TrajectoryNode& TrajectoryNode::operator=(TrajectoryNode&& other) noexcept
{
    typename TrafoT<double>::Vector const formerTranslation = pose.translation();
    pose = other.pose;
    other.pose.translation() = formerTranslation;
    time = other.time;
    type = other.type;
    matrixA.swap(other.matrixA);
    matrixB.swap(other.matrixB);
    flag = other.flag;
    return *this;
}

} // namespace oV::Roamscan
