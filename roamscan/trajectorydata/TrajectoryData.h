#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryNode.h>
#include <roamscan/trajectorydata/Device.h>

#include <iosfwd>
#include <memory>
#include <unordered_map>
#include <vector>

namespace oV::Roamscan
{

/// The trajectory result of one recording: the nodes, and where each device of the instrument sits.
///
/// A plain store; plug-ins work on its fields. Copies are deep, and a store that is moved from is copied.
/// Const operations may run concurrently on one store, writing needs the caller's own exclusion; different
/// stores are independent.
///
/// **Stream format.** An unsigned 64-bit little-endian byte count, then as many bytes: one FlatBuffers buffer
/// of the schema in TrajectoryFile.fbs. The stream must pass bytes through unchanged (binary mode). Other
/// data may stand before and behind. A pose's `valid()` flag is not stored: every pose comes back valid.
struct ROAMSCAN_EXPORT TrajectoryData
{
    std::vector<TrajectoryNode> nodes;                          ///< In no particular order.
    std::unordered_map<Device, TrafoT<double>> devicePositions; ///< Device frame to the nodes' frame.

    TrajectoryData();
    TrajectoryData(TrajectoryData const& other);
    ~TrajectoryData();
    TrajectoryData& operator=(TrajectoryData const& other);

    /// A new store with what readFromStream() reads, or an empty pointer if that fails.
    [[nodiscard]] static std::shared_ptr<TrajectoryData> read(std::istream& stream);

    /// Replaces the contents by what the next frame of the stream holds, and leaves the stream directly
    /// behind it.
    ///
    /// False, and the store exactly as it was, if the stream is not good on entry or ends early, if the
    /// buffer is not a sound one of the schema, if it holds more than 1,000,000 tables (999,999 nodes), if a
    /// node lacks its pose or a matrix, or if its nodes would unpack to more than sixteen times its size. A
    /// device that is none of the first four is dropped with a message in the log, and the read goes on.
    ///
    /// Takes memory for the buffer and the new contents. A byte count that promises more than the stream
    /// holds costs address space only; one that cannot be allocated passes the allocation's exception
    /// through, with the stream behind the count. An exception that the stream is set to raise passes through
    /// too; the store is as it was.
    /// @throws std::bad_alloc, std::length_error
    [[nodiscard]] bool readFromStream(std::istream& stream);

    /// Writes one frame at the stream's position; nothing is flushed. True if the stream is good afterwards.
    /// False, with nothing written, if it is not good on entry, or if the store does not fit the format's
    /// limit of 2 GiB.
    ///
    /// More than 999,999 nodes can be written but not read back. Every bit of a node comes back, but that a
    /// time of -0.0 comes back as 0.0: a field that equals its default is not written.
    [[nodiscard]] bool write(std::ostream& stream) const;

    /// The poses of the nodes seen from one device to another: `inverse(T_to) * P * T_from` for each node's
    /// pose P and the positions T of the two devices.
    /// @throws oV::InternalErrorException if a position is missing; `from` is looked up first
    [[nodiscard]] Trajectory buildTrajectoryFromTrajectoryNodes(Device from, Device to) const;

    /// The same with one device in both roles. A missing position is reported as that of the target; callers
    /// may rely on that message.
    /// @throws oV::InternalErrorException if the position is missing
    [[nodiscard]] Trajectory buildTrajectoryFromTrajectoryNodes(Device device) const;
};

} // namespace oV::Roamscan
