#pragma once

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryNode.h>
#include <roamscan/trajectorydata/Device.h>

#include <iosfwd>
#include <memory>
#include <unordered_map>
#include <vector>

namespace oV
{
class Transform;
}

namespace oV::Roamscan
{

/// The trajectory of one recording: its nodes and the positions of the instrument's devices.
///
/// Plug-ins work on the fields directly. Copies are deep, and moving copies.
///
/// Thread safety: const operations may run concurrently on one store; a write needs exclusive access.
/// Different stores are independent.
///
/// **Stream format.** A length-prefixed buffer: its size as an unsigned 64-bit little-endian number, then one
/// FlatBuffers buffer of the schema in TrajectoryFile.fbs. Other data may precede and follow it. Open streams
/// in binary mode.
struct ROAMSCAN_EXPORT TrajectoryData
{
    std::vector<TrajectoryNode> nodes; ///< In any order.
    std::unordered_map<Device, TrafoT<double>>
        devicePositions; ///< Transforms from the device's frame to the nodes'.

    TrajectoryData();
    TrajectoryData(TrajectoryData const& other);
    ~TrajectoryData();
    TrajectoryData& operator=(TrajectoryData const& other);

    /// @return a new store with the result of readFromStream(), or null if that fails
    [[nodiscard]] static std::shared_ptr<TrajectoryData> read(std::istream& stream);

    /// Replaces the contents of the store by those of a length-prefixed buffer, and leaves the stream
    /// directly after it.
    ///
    /// A device other than the first four is dropped, with a message in the log.
    ///
    /// @return true, or false if
    /// - the stream is not good on entry or ends early,
    /// - the buffer is not valid for the schema,
    /// - it has more than 999,999 nodes, or
    /// - a node lacks its pose or a matrix.
    ///
    /// The store is unchanged if the result is false or an exception is thrown.
    /// @throws std::bad_alloc, std::length_error if the buffer cannot be allocated; the stream is then
    ///         directly after the length
    /// @throws std::ios_base::failure if exceptions are enabled on the stream
    /// @note Every pose is `valid()` after reading, because the flag is not stored. A length beyond the end
    /// of the stream costs address space, not memory.
    [[nodiscard]] bool readFromStream(std::istream& stream);

    /// Writes a length-prefixed buffer at the stream's position. Does not flush.
    /// @return whether everything was written and the stream is good. Nothing is written to a stream that is
    ///         not good, nor if the buffer would exceed the format's limit of 2 GiB.
    /// @warning More than 999,999 nodes can be written but not read back.
    /// @note Numbers are stored bit for bit, except that a time of -0.0 is read back as 0.0: fields that
    /// equal their default are not written.
    [[nodiscard]] bool write(std::ostream& stream) const;

    /// Builds the trajectory of the nodes, re-expressed between two devices. Its poses are
    /// `inverse(T_to) * P * T_from`, where P is the pose of a node, and `T_from` and `T_to` are the entries
    /// of the two devices in `devicePositions`.
    /// @throws oV::InternalErrorException if a position is missing; `from` is checked first
    [[nodiscard]] Trajectory buildTrajectoryFromTrajectoryNodes(Device from, Device to) const;

    /// The same with one device as `from` and `to`.
    /// @throws oV::InternalErrorException if the position is missing
    /// @note The exception's message calls it the `to` device; kept for compatibility.
    [[nodiscard]] Trajectory buildTrajectoryFromTrajectoryNodes(Device device) const;

    /// A scene object that draws the trajectory from one device to another. Include
    /// <roamscan/frame/scene/Transform.h> to use it.
    ///
    /// The object and its line have the name `name`. The line has one point for each node, in the stored
    /// order of the nodes: the translation of the trajectory's pose, in metres. Each marker is an oV::Sphere
    /// of size 0.01 at such a point. Its name is "Node_" and the node's time in seconds. The markers, in the
    /// order of the nodes, and then the line are added as children, with the place 48.
    ///
    /// A node whose time, rounded to 10 ns, is outside the trajectory is skipped.
    /// @param withNodes whether to add a marker for each node
    /// @param name the name of the object and of its line
    /// @param from,to as in buildTrajectoryFromTrajectoryNodes()
    /// @throws oV::InternalErrorException if a position is missing; `from` is looked up first
    /// @note A point at exactly the origin gets a marker but is not on the line.
    [[nodiscard]] Bv_1_1::SmartPtr<Transform>
    lineFromTrajectory(bool withNodes, Bv_1_1::String const& name, Device from, Device to) const;

    /// The same with one device as `from` and `to`.
    /// @throws oV::InternalErrorException if the position is missing
    /// @note The exception's message calls it the `from` device, unlike that of
    ///     buildTrajectoryFromTrajectoryNodes(Device); kept for compatibility.
    [[nodiscard]] Bv_1_1::SmartPtr<Transform>
    lineFromTrajectory(bool withNodes, Bv_1_1::String const& name, Device device) const;
};

} // namespace oV::Roamscan
