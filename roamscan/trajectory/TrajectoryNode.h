#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>

#include <cstdint>

namespace oV::Roamscan
{

/// One pose sample on a trajectory, with payload that the library stores, copies, writes and reads bit for
/// bit and never interprets.
///
/// A plain value. Many threads may read a node; writing needs the caller's own exclusion.
struct ROAMSCAN_EXPORT TrajectoryNode
{
    /// The kind of a node. The library itself only ever produces `Default`; plug-ins may give meaning to any
    /// other 32-bit value.
    enum class Type : std::uint32_t
    {
        Default = 0
    };

    TrafoT<double> pose;                 ///< Device frame to the trajectory's frame.
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

    /// A copy; `other` is left as it was.
    TrajectoryNode(TrajectoryNode&& other) noexcept;
    ~TrajectoryNode();

    TrajectoryNode& operator=(TrajectoryNode const& other);

    /// Takes all values of `other`. Callers may rely on what stays behind in it: the pose's translation and
    /// both matrices have changed places with this node's former ones, everything else is still there.
    TrajectoryNode& operator=(TrajectoryNode&& other) noexcept;
};

} // namespace oV::Roamscan
