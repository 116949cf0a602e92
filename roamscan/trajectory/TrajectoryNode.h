#pragma once

#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>

#include <cstdint>

namespace oV::Roamscan
{

/// One pose sample on a trajectory. `type`, `matrixA`, `matrixB` and `flag` are payload for plug-ins: the
/// library copies and stores them bit for bit and never interprets them.
struct ROAMSCAN_EXPORT TrajectoryNode
{
    /// The kind of a node. The library itself only uses `Default`; plug-ins may define any other 32-bit
    /// value.
    enum class Type : std::uint32_t
    {
        Default = 0
    };

    TrafoT<double> pose;                 ///< Transforms from the device's frame to the trajectory's.
    double time;                         ///< Seconds on the time axis.
    Type type;                           ///< Payload.
    Eigen::Matrix<double, 3, 3> matrixA; ///< Payload, column-major.
    Eigen::Matrix<double, 3, 3> matrixB; ///< Payload, column-major.
    bool flag;                           ///< Payload.

    /// Time 0, the identity pose, type `Default`, zero matrices, flag true.
    TrajectoryNode();

    /// @note Here the time comes before the pose, in the structure after it. Both orders are part of the
    /// interface, and so is the implicit conversion from a time.
    // NOLINTNEXTLINE(google-explicit-constructor): see the note
    TrajectoryNode(double time,
                   TrafoT<double> const& pose = TrafoT<double>::Identity(),
                   Type const& type = Type::Default,
                   Eigen::Matrix<double, 3, 3> const& matrixA = Eigen::Matrix<double, 3, 3>::Zero(),
                   Eigen::Matrix<double, 3, 3> const& matrixB = Eigen::Matrix<double, 3, 3>::Zero(),
                   bool flag = true);

    TrajectoryNode(TrajectoryNode const& other);

    /// Copies, so `other` is unchanged.
    TrajectoryNode(TrajectoryNode&& other) noexcept;
    ~TrajectoryNode();

    TrajectoryNode& operator=(TrajectoryNode const& other);

    /// Takes all values of `other`.
    /// @note Afterwards `other` holds this node's former translation and matrices, because these are swapped.
    /// Its other values are unchanged.
    TrajectoryNode& operator=(TrajectoryNode&& other) noexcept;
};

} // namespace oV::Roamscan
